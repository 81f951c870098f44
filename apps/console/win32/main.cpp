// The main of the console programs on Windows. Arguments and environment arrive as UTF-16. Output is UTF-16 to a
// console, UTF-8 to a file or pipe. If a program was started without any output, its output is dropped, which is no
// error.
#include <windows.h>

#include <algorithm>
#include <iostream>
#include <ostream>
#include <streambuf>

#include "apps/console/console.h"
#include "apps/console/secret_input.h"
#include "support/encoding.h"

namespace {

std::string utf8(const wchar_t* text) { return support::utf8_from_utf16(reinterpret_cast<const char16_t*>(text)); }

class HandleBuffer : public std::streambuf {
 public:
  explicit HandleBuffer(DWORD standard_handle)
      : handle_(GetStdHandle(standard_handle)), is_nowhere_(leads_nowhere(handle_)) {
    DWORD mode = 0;
    is_console_ = !is_nowhere_ && GetConsoleMode(handle_, &mode) != 0;
  }
  bool is_console() const { return is_console_; }

 protected:
  int_type overflow(int_type character) override {
    if (traits_type::eq_int_type(character, traits_type::eof())) return traits_type::not_eof(character);
    const char byte = traits_type::to_char_type(character);
    return xsputn(&byte, 1) == 1 ? character : traits_type::eof();
  }

  std::streamsize xsputn(const char* bytes, std::streamsize count) override {
    if (is_nowhere_) return count;
    pending_.append(bytes, static_cast<std::size_t>(count));
    if (pending_.size() >= 16384 && sync() != 0) return 0;
    return count;
  }

  int sync() override {
    const std::size_t whole = is_console_ ? whole_characters() : pending_.size();
    const bool written = is_console_ ? write_console(pending_.substr(0, whole)) : write_bytes();
    pending_.erase(0, whole);
    return written ? 0 : -1;
  }

 private:
  /// True if output goes nowhere: task schedulers and services start programs without standard handles, or with closed
  /// ones.
  static bool leads_nowhere(HANDLE handle) {
    if (handle == nullptr || handle == INVALID_HANDLE_VALUE) return true;
    SetLastError(ERROR_SUCCESS);
    return GetFileType(handle) == FILE_TYPE_UNKNOWN && GetLastError() != ERROR_SUCCESS;
  }

  /// Number of bytes before an incomplete last character.
  std::size_t whole_characters() const {
    for (std::size_t back = 1; back <= 3 && back <= pending_.size(); ++back) {
      const auto byte = static_cast<unsigned char>(pending_[pending_.size() - back]);
      if (byte < 0x80) break;
      if (byte < 0xC0) continue;
      const std::size_t length = byte >= 0xF0 ? 4 : byte >= 0xE0 ? 3 : 2;
      return length > back ? pending_.size() - back : pending_.size();
    }
    return pending_.size();
  }

  bool write_console(const std::string& text) const {
    const std::u16string units = support::utf16_from_utf8(text);
    for (std::size_t done = 0; done < units.size();) {
      const auto part = static_cast<DWORD>(std::min<std::size_t>(units.size() - done, 8192));
      DWORD written = 0;
      if (WriteConsoleW(handle_, units.data() + done, part, &written, nullptr) == 0 || written == 0) return false;
      done += written;
    }
    return true;
  }

  bool write_bytes() const {
    for (std::size_t done = 0; done < pending_.size();) {
      DWORD written = 0;
      const auto part = static_cast<DWORD>(std::min<std::size_t>(pending_.size() - done, 1 << 20));
      if (WriteFile(handle_, pending_.data() + done, part, &written, nullptr) == 0 || written == 0) return false;
      done += written;
    }
    return true;
  }

  HANDLE handle_;
  bool is_nowhere_, is_console_ = false;
  std::string pending_;
};

std::optional<std::string> environment_value(std::string_view name) {
  const std::u16string wide_name = support::utf16_from_utf8(name);
  std::wstring value(32768, L'\0');
  SetLastError(ERROR_SUCCESS);
  const DWORD length = GetEnvironmentVariableW(reinterpret_cast<const wchar_t*>(wide_name.c_str()), value.data(),
                                               static_cast<DWORD>(value.size()));
  if (length == 0 && GetLastError() == ERROR_ENVVAR_NOT_FOUND) return std::nullopt;
  value.resize(length);
  return utf8(value.c_str());
}

std::string program_folder() {
  std::wstring path(32768, L'\0');
  path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
  path.resize(path.find_last_of(L'\\') + 1);
  return utf8(path.c_str());
}

}  // namespace

int wmain(int count, wchar_t** words) {
  HandleBuffer out_buffer(STD_OUTPUT_HANDLE), err_buffer(STD_ERROR_HANDLE);
  std::ostream out(&out_buffer), err(&err_buffer);
  err << std::unitbuf;
  console::Console console{out, err, environment_value, program_folder(), err_buffer.is_console(), &std::cin};
  console.ask_secret = console::secret_input();
  std::vector<std::string> arguments;
  for (int i = 1; i < count; ++i) arguments.push_back(utf8(words[i]));
  const int code = console::program(arguments, console);
  if (out.flush()) return code;
  err << "error 57: the output could not be written\n";
  return console::exit_failed;
}

#include "support/win32/ini_files.h"

#include <windows.h>

#include <algorithm>
#include <optional>

#include "support/encoding.h"
#include "support/host.h"
#include "support/host_file.h"
#include "support/ini_document.h"
#include "support/win32/sharing.h"
#include "support/win32/wide.h"

namespace support {

namespace {

/// The file as the calls take it; nothing where it is too large for them to be let near it.
std::optional<std::string> profile_path(std::string_view file) {
  if (host_file_system().file_size(file).value_or(0) > most_ini_bytes) return std::nullopt;
  return ansi_path(file);
}

/// The call with null for an empty section or key, which asks for names.
std::string ask(std::string_view file, const std::string* section, const std::string* key, std::string_view fallback,
                std::size_t size) {
  const std::string default_text = cp1252_from_utf8(fallback);
  // Without a file the call answers from one that is not there: it treats the default as it always does.
  const std::string path = profile_path(file).value_or(R"(\\.\NUL\none.ini)");
  std::string buffer(size, '\0');
  const DWORD length =
      GetPrivateProfileStringA(section != nullptr ? section->c_str() : nullptr, key != nullptr ? key->c_str() : nullptr,
                               default_text.c_str(), buffer.data(), static_cast<DWORD>(size), path.c_str());
  return utf8_from_cp1252(std::string_view(buffer).substr(0, std::min<std::size_t>(length, size)));
}

/// A read-only file stays as it is, and one with NULs too: the calls would lose what follows them.
bool may_be_written(const std::string& path) {
  const DWORD attributes = GetFileAttributesW(wide_path(path).c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES) return !host_file_exists(path);
  if ((attributes & FILE_ATTRIBUTE_READONLY) != 0) return false;
  const auto bytes = read_host_file(path, most_ini_bytes);
  return bytes && IniDocument::parse(*bytes).is_text();
}

}  // namespace

std::string Win32IniFiles::value(std::string_view file, std::string_view section, std::string_view key,
                                 std::string_view fallback, std::size_t size) const {
  const std::string section_name = cp1252_from_utf8(section);
  const std::string key_name = cp1252_from_utf8(key);
  return ask(file, &section_name, &key_name, fallback, size);
}

std::string Win32IniFiles::keys(std::string_view file, std::string_view section, std::string_view fallback,
                                std::size_t size) const {
  const std::string section_name = cp1252_from_utf8(section);
  return ask(file, &section_name, nullptr, fallback, size);
}

std::string Win32IniFiles::sections(std::string_view file, std::string_view fallback, std::size_t size) const {
  return ask(file, nullptr, nullptr, fallback, size);
}

bool Win32IniFiles::write(std::string_view file, std::string_view section, std::string_view key,
                          std::string_view value) {
  const auto path = profile_path(file);
  if (!path || !is_writable_ini_entry(section, key, value) || !may_be_written(std::string(file))) return false;
  const std::string section_name = cp1252_from_utf8(section), key_name = cp1252_from_utf8(key);
  const std::string text = cp1252_from_utf8(value);
  const bool written = with_patience([&] {
    return WritePrivateProfileStringA(section_name.c_str(), key_name.c_str(), text.c_str(), path->c_str()) != 0;
  });
  // Hands what is cached to the file; its result says nothing.
  WritePrivateProfileStringA(nullptr, nullptr, nullptr, path->c_str());
  return written;
}

IniFiles& host_ini_files() {
  static Win32IniFiles files;
  return files;
}

}  // namespace support

#include "support/win32/ini_files.h"

#include <windows.h>

#include "support/abandoned_files.h"
#include "support/encoding.h"
#include "support/host_file.h"
#include "support/ini_document.h"
#include "support/win32/handle.h"
#include "support/win32/wide.h"

namespace support {

namespace {

constexpr UINT our_code_page = 1252;

/// True if a new file can be made in the file's folder: one is made there and deleted at once.
bool takes_new_files(std::string_view file) {
  const std::wstring probe = wide_path(file) + wide(replacement_mark) + std::to_wstring(GetCurrentProcessId());
  return static_cast<bool>(FileHandle(CreateFileW(probe.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                                                  FILE_ATTRIBUTE_NORMAL | FILE_FLAG_DELETE_ON_CLOSE, nullptr)));
}

/// False for a read-only file, and for one that the profile call would damage: one with NULs, a too large one, or one
/// in UTF-8.
bool may_be_written(const std::string& path) {
  const DWORD attributes = GetFileAttributesW(wide_path(path).c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_READONLY) != 0) return false;
  const auto bytes = read_host_file(path, most_ini_bytes);
  return bytes && !bytes->starts_with(utf8_byte_order_mark) && IniDocument::parse(*bytes).is_text();
}

bool write_in_place(std::string_view file, std::string_view section, std::string_view key, std::string_view value) {
  const auto path = ansi_path(file);
  if (!path || !is_writable_ini_entry(section, key, value) || !may_be_written(std::string(file))) return false;
  const std::string section_name = cp1252_from_utf8(section), key_name = cp1252_from_utf8(key);
  const std::string text = cp1252_from_utf8(value);
  const bool written = with_patience([&] {
    return WritePrivateProfileStringA(section_name.c_str(), key_name.c_str(), text.c_str(), path->c_str()) != 0;
  });
  // Makes the system write its cache into the file; the result means nothing.
  WritePrivateProfileStringA(nullptr, nullptr, nullptr, path->c_str());
  return written;
}

}  // namespace

bool Win32IniFiles::write(std::string_view file, std::string_view section, std::string_view key,
                          std::string_view value) {
  if (FileIniFiles::write(file, section, key, value)) return true;
  return GetACP() == our_code_page && !takes_new_files(file) && write_in_place(file, section, key, value);
}

}  // namespace support

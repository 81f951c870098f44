// Ini files: the reader and writer that every configuration value passes through.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace support {

class FileSystem;
class Registry;

/// The platform's profile calls. File names are Windows paths. Sections, keys and values are UTF-8 here and CP1252 in
/// the file. Both adapters give the same answers, byte for byte. A file that is missing, unreadable or larger than 4
/// MiB is treated as empty, and so is an empty file name.
class IniFiles {
 public:
  virtual ~IniFiles() = default;
  /// The value of a key, or `fallback`. It is cut to size - 1 characters; one pair of quotes and outer blanks are
  /// removed.
  virtual std::string value(std::string_view file, std::string_view section, std::string_view key,
                            std::string_view fallback, std::size_t size) const = 0;
  /// The values of several keys, as `value` gives them without a fallback, from one reading of the file.
  virtual std::vector<std::string> values(std::string_view file, std::string_view section,
                                          std::span<const std::string> keys, std::size_t size) const;
  /// Key names of a section, each followed by one NUL, together at most size - 2 characters; `fallback` if there is no
  /// such section.
  virtual std::string keys(std::string_view file, std::string_view section, std::string_view fallback,
                           std::size_t size) const = 0;
  /// Section names in the same form. The platform's call ignores the fallback here.
  virtual std::string sections(std::string_view file, std::string_view fallback, std::size_t size) const = 0;
  /// Writes one value and adds file, section or key if missing; comments and order stay. True if the file holds the
  /// value afterwards. Refused are: an entry that would not read back unchanged (outside CP1252, line breaks, names
  /// that look like syntax), a file with NULs in it, and a read-only file.
  virtual bool write(std::string_view file, std::string_view section, std::string_view key, std::string_view value) = 0;
};

/// What ReadIni() shall read.
struct IniQuery {
  std::string_view section;
  /// The key; or "KEYS" for all key names of the section, or "SECTIONS" for all section names of the file.
  std::string_view key;
  std::string_view fallback = {};
  /// The file. If empty, it is "setup.ini" in the folder that the value "path" of `registry_key` on the local machine
  /// names.
  std::string_view file = {};
  /// Number of the piece to return, from 0, after the text is split at the delimiter; -1 for the whole text.
  std::int16_t index = -1;
  /// The delimiter; NUL if empty. With "KEYS" and "SECTIONS" it joins the names.
  std::string_view delimiter = {};
};

/// Reads through a buffer of 4096 characters, as IniFiles answers. An index behind the last piece gives the empty text.
/// Never raises.
std::string ReadIni(const IniFiles& files, const Registry& registry, std::string_view registry_key,
                    const IniQuery& query);

/// The values of several keys of a file, each as ReadIni() gives that of one key, from one reading of the file. All are
/// empty where the file has no name or cannot be read. Never raises.
std::vector<std::string> ReadIniValues(const IniFiles& files, std::string_view file, std::string_view section,
                                       std::span<const std::string> keys);

/// Puts the section names of the scheme file, in file order, into `names` and returns their count. For a missing or
/// empty file it returns 0 and leaves `names` as it was. At most 4095 characters of names are read; a name that is cut
/// there is left out. Never raises.
std::int16_t GetSchemes(const IniFiles& ini, const FileSystem& files, std::string_view schemes_file,
                        std::vector<std::string>& names);

}  // namespace support

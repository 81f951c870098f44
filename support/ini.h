// Ini files: the reader and writer that every configuration value passes through.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace support {

class FileSystem;
class Registry;

/// The platform's profile calls. File names are Windows paths; sections, keys and values are UTF-8 here and CP1252 in
/// the file. Both edges answer alike, byte for byte. A file that is missing, unreadable or larger than 4 MiB holds
/// nothing; so does an empty file name.
class IniFiles {
 public:
  virtual ~IniFiles() = default;
  /// The value of a key, or `fallback`; cut to size - 1 characters, one pair of quotes and outer blanks removed.
  virtual std::string value(std::string_view file, std::string_view section, std::string_view key,
                            std::string_view fallback, std::size_t size) const = 0;
  /// Key names of a section, each followed by one NUL; at most size - 2 characters. `fallback` where there is no
  /// section.
  virtual std::string keys(std::string_view file, std::string_view section, std::string_view fallback,
                           std::size_t size) const = 0;
  /// Section names, in the same form. The platform does not use the fallback here.
  virtual std::string sections(std::string_view file, std::string_view fallback, std::size_t size) const = 0;
  /// Writes one value, adding file, section or key where missing; comments and order stay. True when the file holds the
  /// value now. Refused: what would not read back as it is (outside CP1252, line breaks, names that run into the
  /// syntax), a file with NULs in it, a read-only file.
  virtual bool write(std::string_view file, std::string_view section, std::string_view key, std::string_view value) = 0;
};

/// What ReadIni is asked for.
struct IniQuery {
  std::string_view section;
  /// A key, or "KEYS" (all key names of the section) or "SECTIONS" (all section names of the file).
  std::string_view key;
  std::string_view fallback = {};
  /// Empty: "setup.ini" in the folder that the local machine value "path" of `registry_key` names.
  std::string_view file = {};
  /// Piece to return, from 0, after splitting at the delimiter; -1 the whole text.
  std::int16_t index = -1;
  /// Empty: NUL. In "KEYS" and "SECTIONS" mode the names come joined by it.
  std::string_view delimiter = {};
};

/// Reads through a buffer of 4096 characters, as IniFiles answers. An index beyond the last piece gives the empty text.
/// Never raises.
std::string ReadIni(const IniFiles& files, const Registry& registry, std::string_view registry_key,
                    const IniQuery& query);

/// Section names of the scheme file, in file order, into `names`; returns their count. A missing or empty file returns
/// 0 and leaves `names` as it was. At most 4095 characters of names are read: only whole names before the cut count.
/// Never raises.
std::int16_t GetSchemes(const IniFiles& ini, const FileSystem& files, std::string_view schemes_file,
                        std::vector<std::string>& names);

}  // namespace support

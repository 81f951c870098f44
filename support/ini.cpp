#include "support/ini.h"

#include "support/error.h"
#include "support/file_system.h"
#include "support/registry.h"
#include "support/text.h"

namespace support {

namespace {

constexpr std::size_t ini_buffer = 4096, schemes_buffer = 4095;
constexpr std::string_view nul_character("\0", 1);

std::string joined(std::string_view names, std::string_view delimiter) {
  std::string text;
  if (names.ends_with('\0')) names.remove_suffix(1);
  for (const char character : names) {
    if (character == '\0') {
      text += delimiter;
    } else {
      text += character;
    }
  }
  return text;
}

/// The piece with the 0-based index; empty if there is none. Behind a trailing delimiter there is an empty piece.
std::string piece(std::string_view text, std::int16_t index, std::string_view delimiter) {
  for (; index >= 0; --index) {
    const auto end = text.find(delimiter);
    if (index == 0) return std::string(text.substr(0, end));
    if (end == std::string_view::npos) break;
    text.remove_prefix(end + delimiter.size());
  }
  return {};
}

std::string default_ini_file(const Registry& registry, std::string_view registry_key) {
  std::string folder;
  ReadRegValue(registry, RootKey::LocalMachine, registry_key, "path", folder);
  return trim(folder) + "\\setup.ini";
}

std::string read_through_buffer(const IniFiles& files, const std::string& file, const IniQuery& query,
                                std::string_view delimiter) {
  const bool key_list = query.key == "KEYS";
  if (!key_list && query.key != "SECTIONS") {
    return files.value(file, query.section, query.key, query.fallback, ini_buffer);
  }
  const std::string names = key_list ? files.keys(file, query.section, query.fallback, ini_buffer)
                                     : files.sections(file, query.fallback, ini_buffer);
  return delimiter == nul_character ? names : joined(names, delimiter);
}

}  // namespace

std::vector<std::string> IniFiles::values(std::string_view file, std::string_view section,
                                          std::span<const std::string> keys, std::size_t size) const {
  std::vector<std::string> values;
  for (const std::string& key : keys) values.push_back(value(file, section, key, {}, size));
  return values;
}

std::string ReadIni(const IniFiles& files, const Registry& registry, std::string_view registry_key,
                    const IniQuery& query) {
  Procedure procedure("registry!ReadIni");
  std::string text;
  procedure.guarded([&] {
    const std::string file = query.file.empty() ? default_ini_file(registry, registry_key) : std::string(query.file);
    const std::string_view delimiter = query.delimiter.empty() ? nul_character : query.delimiter;
    text = read_through_buffer(files, file, query, delimiter);
    if (query.index != -1) text = piece(text, query.index, delimiter);
  });
  return text;
}

std::vector<std::string> ReadIniValues(const IniFiles& files, std::string_view file, std::string_view section,
                                       std::span<const std::string> keys) {
  Procedure procedure("registry!ReadIni");
  std::vector<std::string> values;
  procedure.guarded([&] { values = files.values(file, section, keys, ini_buffer); });
  values.resize(keys.size());
  return values;
}

std::int16_t GetSchemes(const IniFiles& ini, const FileSystem& files, std::string_view schemes_file,
                        std::vector<std::string>& names) {
  Procedure procedure("code!GetSchemes");
  std::int16_t count = 0;
  procedure.step([&] {
    if (!file_test(files, schemes_file)) return;
    const std::string list = ini.sections(schemes_file, {}, schemes_buffer);
    names.clear();
    // A name is complete only if a NUL follows it.
    Split(std::string_view(list).substr(0, list.rfind('\0') + 1), names, nul_character);
    count = static_cast<std::int16_t>(names.size());
  });
  return count;
}

}  // namespace support

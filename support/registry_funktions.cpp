#include "support/registry_funktions.h"

#include "support/common_code.h"
#include "support/error.h"
#include "support/ini.h"

namespace support {

namespace {

constexpr std::uint32_t text_type = 1;
constexpr std::uint32_t expandable_text_type = 2;
constexpr std::uint32_t number_type = 4;
constexpr std::size_t ini_buffer = 4096;
constexpr std::string_view nul_character("\0", 1);

/// The value as text; nothing for a type that is not supported. Numbers are signed, as the callers count.
std::optional<std::string> value_text(const RegistryValue& value) {
  if (value.type == number_type) return std::to_string(static_cast<std::int32_t>(value.number));
  if (value.type != text_type && value.type != expandable_text_type) return std::nullopt;
  std::string text = value.text;
  if (!text.empty() && static_cast<unsigned char>(text.back()) < 20) text.pop_back();
  return text;
}

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

/// The piece with the 0-based index; empty where there is none. A trailing delimiter has an empty piece behind it.
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

bool KeyExists(const Registry& registry, RootKey root, std::string_view key) {
  Procedure procedure("registry!KeyExists");
  bool exists = false;
  procedure.step([&] { exists = registry.key_exists(root, key); });
  return exists;
}

bool ReadRegValue(const Registry& registry, RootKey root, std::string_view key, std::string_view name,
                  std::string& output) {
  Procedure procedure("registry!ReadRegValue");
  bool was_read = false;
  procedure.guarded([&] {
    const std::optional<RegistryValue> value = registry.read(root, key, name);
    const std::optional<std::string> text = value ? value_text(*value) : std::nullopt;
    if (!text) return;
    std::string trimmed = vtrim(*text);
    if (!trimmed.empty()) output = std::move(trimmed);
    was_read = true;
  });
  return was_read;
}

bool CreateRegKey(Registry& registry, RootKey root, std::string_view key, std::string_view class_name) {
  Procedure procedure("registry!CreateRegKey");
  bool created = false;
  procedure.step([&] { created = registry.create_key(root, key, class_name) == Registry::CreateResult::Created; });
  return created;
}

bool WriteRegString(Registry& registry, RootKey root, std::string_view key, std::string_view name,
                    std::string_view value) {
  Procedure procedure("registry!WriteRegString");
  if (!KeyExists(registry, root, key)) CreateRegKey(registry, root, key, "string");
  bool written = false;
  procedure.step([&] { written = registry.write_text(root, key, name, value.empty() ? " " : value); });
  return written;
}

std::string vtrim(std::string_view text) {
  std::string trimmed = trim(text);
  Procedure procedure("registry!vtrim");
  return trimmed;
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

}  // namespace support

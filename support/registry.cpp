#include "support/registry.h"

#include "support/error.h"
#include "support/text.h"

namespace support {

namespace {

/// The value as text; nothing for an unsupported type. Numbers are signed, because the callers take them so.
std::optional<std::string> value_text(const RegistryValue& value) {
  if (value.type == RegistryValue::number_type) return std::to_string(static_cast<std::int32_t>(value.number));
  if (value.type != RegistryValue::text_type && value.type != RegistryValue::expandable_text_type) return std::nullopt;
  std::string text = value.text;
  if (!text.empty() && static_cast<unsigned char>(text.back()) < 20) text.pop_back();
  return text;
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

}  // namespace support

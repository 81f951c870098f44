#include "support/hive_registry.h"

#include <functional>
#include <utility>

#include "support/abandoned_files.h"
#include "support/encoding.h"
#include "support/error.h"
#include "support/hive_document.h"
#include "support/host_file.h"

namespace support {

namespace {

constexpr std::uint64_t most_hive_bytes = std::uint64_t{4} << 20U;

std::string full_path(RootKey root, std::string_view key) {
  const char* name = root == RootKey::CurrentUser ? "HKEY_CURRENT_USER" : "HKEY_LOCAL_MACHINE";
  return std::string(name) + "\\" + std::string(key);
}

/// True if the text fits into one line of the file.
bool fits_line(std::string_view text) {
  return fits_cp1252(text) && text.find_first_of(std::string_view("\r\n\0", 3)) == std::string_view::npos;
}

RegistryValue value_of_bytes(const HiveBytes& data) {
  RegistryValue value{data.type, {}, 0};
  if (data.type == RegistryValue::text_type || data.type == RegistryValue::expandable_text_type)
    value.text = utf8_from_cp1252(data.bytes);
  if (data.type == RegistryValue::number_type && data.bytes.size() == 4) {
    for (std::size_t i = 4; i > 0; --i)
      value.number = value.number << 8U | static_cast<unsigned char>(data.bytes[i - 1]);
  }
  return value;
}

class HiveRegistry final : public Registry {
 public:
  explicit HiveRegistry(std::string_view path) : path_(path) {
    remove_abandoned_files(path_, replacement_mark);
    load();
  }

  bool key_exists(RootKey root, std::string_view key) const override {
    return key.empty() || document_.key_exists(full_path(root, key));
  }

  std::optional<RegistryValue> read(RootKey root, std::string_view key, std::string_view name) const override {
    const auto data = document_.data(full_path(root, key), name);
    if (!data) return std::nullopt;
    if (auto text = hive_text(*data)) return RegistryValue{RegistryValue::text_type, std::move(*text) + '\0', 0};
    if (const auto number = hive_number(*data)) return RegistryValue{RegistryValue::number_type, {}, *number};
    return value_of_bytes(hive_bytes(*data).value_or(HiveBytes{}));
  }

  CreateResult create_key(RootKey root, std::string_view key, std::string_view /*class_name*/) override {
    if (key_exists(root, key)) return CreateResult::Existed;
    if (!fits_line(key)) return CreateResult::Failed;
    store([&](HiveDocument& document) { return document.create_key(full_path(root, key)); });
    return CreateResult::Created;
  }

  bool write_text(RootKey root, std::string_view key, std::string_view name, std::string_view value) override {
    if (!key_exists(root, key) || !fits_line(name) || !fits_line(value)) return false;
    store([&](HiveDocument& document) { return document.set_data(full_path(root, key), name, hive_text_data(value)); });
    return true;
  }

  bool can_write(RootKey /*root*/, std::string_view /*key*/) const override { return can_replace_host_file(path_); }

 private:
  void load() {
    std::optional<std::string> bytes = read_host_file(path_, most_hive_bytes);
    if (!bytes && host_file_exists(path_)) {
      throw RuntimeError(error_number::path_file_access, path_ + " cannot be read or is larger than 4 MiB");
    }
    if (bytes == bytes_) return;
    document_ = bytes ? HiveDocument::parse(*bytes, path_) : HiveDocument();
    bytes_ = std::move(bytes);
  }

  /// Applies a change to what the file holds now. Replaces the file if the change made a difference.
  void store(const std::function<bool(HiveDocument&)>& change) {
    const HostFileLock lock(path_);
    load();
    HiveDocument changed = document_;
    if (!change(changed)) return;
    std::string bytes = changed.bytes();
    replace_host_file(path_, bytes);
    document_ = std::move(changed);
    bytes_ = std::move(bytes);
  }

  std::string path_;
  std::optional<std::string> bytes_;
  HiveDocument document_;
};

}  // namespace

std::unique_ptr<Registry> open_hive(std::string_view host_path) { return std::make_unique<HiveRegistry>(host_path); }

}  // namespace support

// Ports in which the plan's faults happen: each operation that changes something is a possible point.
#pragma once

#include "support/error.h"
#include "support/file_system.h"
#include "support/ini.h"
#include "support/registry.h"
#include "tests/faults/fault_plan.h"

namespace faults {

class FaultyRegistry : public support::Registry {
 public:
  support::Registry* real = nullptr;

  bool key_exists(support::RootKey root, std::string_view key) const override { return real->key_exists(root, key); }
  std::optional<support::RegistryValue> read(support::RootKey root, std::string_view key,
                                             std::string_view name) const override {
    return real->read(root, key, name);
  }
  CreateResult create_key(support::RootKey root, std::string_view key, std::string_view class_name) override {
    if (fails(Operation::Write)) throw support::RuntimeError(75, "no key can be made");
    return real->create_key(root, key, class_name);
  }
  bool write_text(support::RootKey root, std::string_view key, std::string_view name, std::string_view value) override {
    if (fails(Operation::Write)) throw support::RuntimeError(75, "no value can be written");
    return real->write_text(root, key, name, value);
  }
  bool can_write(support::RootKey root, std::string_view key) const override { return real->can_write(root, key); }
};

class FaultyIniFiles : public support::IniFiles {
 public:
  support::IniFiles* real = nullptr;

  std::string value(std::string_view file, std::string_view section, std::string_view key, std::string_view fallback,
                    std::size_t size) const override {
    return real->value(file, section, key, fallback, size);
  }
  std::string keys(std::string_view file, std::string_view section, std::string_view fallback,
                   std::size_t size) const override {
    return real->keys(file, section, fallback, size);
  }
  std::string sections(std::string_view file, std::string_view fallback, std::size_t size) const override {
    return real->sections(file, fallback, size);
  }
  bool write(std::string_view file, std::string_view section, std::string_view key, std::string_view value) override {
    return !fails(Operation::Write) && real->write(file, section, key, value);
  }
};

class FaultyFileSystem : public support::FileSystem {
 public:
  support::FileSystem* real = nullptr;

  std::optional<std::uint64_t> file_size(std::string_view path) const override { return real->file_size(path); }
  bool folder_exists(std::string_view path) const override { return real->folder_exists(path); }
  bool create_folder(std::string_view path) override { return !fails(Operation::Write) && real->create_folder(path); }
  std::vector<std::string> files(std::string_view folder, std::string_view pattern) const override {
    return real->files(folder, pattern);
  }
  std::optional<std::string> read(std::string_view path, std::uint64_t limit) const override {
    return real->read(path, limit);
  }
  bool rename_without_replacing(std::string_view source, std::string_view target) override {
    return !fails(Operation::Other) && real->rename_without_replacing(source, target);
  }
  /// Removing always works, because an interrupted run cleans up with it.
  bool remove(std::string_view path) override { return real->remove(path); }
  bool can_create_in(std::string_view folder) const override { return real->can_create_in(folder); }
  bool can_write(std::string_view path) const override { return real->can_write(path); }
  std::optional<std::uint64_t> free_space(std::string_view folder) const override { return real->free_space(folder); }
  std::string host_path(std::string_view path) const override { return real->host_path(path); }
  std::string windows_path(std::string_view host_path) const override { return real->windows_path(host_path); }
};

}  // namespace faults

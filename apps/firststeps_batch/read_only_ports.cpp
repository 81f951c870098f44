#include "apps/firststeps_batch/read_only_ports.h"

namespace firststeps_batch {
namespace {

class ReadOnlyRegistry : public support::Registry {
 public:
  explicit ReadOnlyRegistry(const support::Registry& registry) : registry_(registry) {}
  bool key_exists(support::RootKey root, std::string_view key) const override {
    return registry_.key_exists(root, key);
  }
  std::optional<support::RegistryValue> read(support::RootKey root, std::string_view key,
                                             std::string_view name) const override {
    return registry_.read(root, key, name);
  }
  CreateResult create_key(support::RootKey, std::string_view, std::string_view) override {
    return CreateResult::Failed;
  }
  bool write_text(support::RootKey, std::string_view, std::string_view, std::string_view) override { return false; }
  /// Answers as in a real run.
  bool can_write(support::RootKey root, std::string_view key) const override { return registry_.can_write(root, key); }

 private:
  const support::Registry& registry_;
};

class ReadOnlyIniFiles : public support::IniFiles {
 public:
  explicit ReadOnlyIniFiles(const support::IniFiles& files) : files_(files) {}
  std::string value(std::string_view file, std::string_view section, std::string_view key, std::string_view fallback,
                    std::size_t size) const override {
    return files_.value(file, section, key, fallback, size);
  }
  std::string keys(std::string_view file, std::string_view section, std::string_view fallback,
                   std::size_t size) const override {
    return files_.keys(file, section, fallback, size);
  }
  std::string sections(std::string_view file, std::string_view fallback, std::size_t size) const override {
    return files_.sections(file, fallback, size);
  }
  bool write(std::string_view, std::string_view, std::string_view, std::string_view) override { return false; }

 private:
  const support::IniFiles& files_;
};

class ReadOnlyFileSystem : public support::FileSystem {
 public:
  explicit ReadOnlyFileSystem(const support::FileSystem& files) : files_(files) {}
  std::optional<std::uint64_t> file_size(std::string_view path) const override { return files_.file_size(path); }
  bool folder_exists(std::string_view path) const override { return files_.folder_exists(path); }
  bool create_folder(std::string_view path) override { return files_.folder_exists(path); }
  std::vector<std::string> files(std::string_view folder, std::string_view pattern) const override {
    return files_.files(folder, pattern);
  }
  std::optional<std::string> read(std::string_view path, std::uint64_t limit) const override {
    return files_.read(path, limit);
  }
  bool rename_without_replacing(std::string_view, std::string_view) override { return false; }
  bool remove(std::string_view) override { return false; }
  // Answer as in a real run.
  bool can_create_in(std::string_view folder) const override { return files_.can_create_in(folder); }
  bool can_write(std::string_view path) const override { return files_.can_write(path); }
  std::optional<std::uint64_t> free_space(std::string_view folder) const override { return files_.free_space(folder); }
  std::string host_path(std::string_view path) const override { return files_.host_path(path); }
  std::string windows_path(std::string_view host_path) const override { return files_.windows_path(host_path); }

 private:
  const support::FileSystem& files_;
};

class ReadOnlyEngine : public engine::Engine {
 public:
  explicit ReadOnlyEngine(std::unique_ptr<engine::Engine> engine) : engine_(std::move(engine)) {}
  std::unique_ptr<engine::Database> create_database(std::string_view, std::string_view, std::int32_t) override {
    throw support::RuntimeError(support::error_number::read_only, "Cannot update. Database or object is read-only.");
  }
  std::unique_ptr<engine::Database> open_database(std::string_view path, bool exclusive, bool,
                                                  std::string_view connect) override {
    return engine_->open_database(path, exclusive, true, connect);
  }

 private:
  std::unique_ptr<engine::Engine> engine_;
};

}  // namespace

std::unique_ptr<support::Registry> read_only(const support::Registry& registry) {
  return std::make_unique<ReadOnlyRegistry>(registry);
}

std::unique_ptr<support::IniFiles> read_only(const support::IniFiles& files) {
  return std::make_unique<ReadOnlyIniFiles>(files);
}

std::unique_ptr<support::FileSystem> read_only(const support::FileSystem& files) {
  return std::make_unique<ReadOnlyFileSystem>(files);
}

OpenEngine read_only(OpenEngine open_engine) {
  return [open_engine = std::move(open_engine)](std::string_view identifier) -> std::unique_ptr<engine::Engine> {
    return std::make_unique<ReadOnlyEngine>(open_engine(identifier));
  };
}

}  // namespace firststeps_batch

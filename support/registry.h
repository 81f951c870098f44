// Registry access of the wizard: a few forgiving helpers over a port that speaks to the real registry or to a hive
// kept as a text file. Helpers never raise; a failure is a false result and an untouched output.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace support {

enum class RootKey : std::uint32_t { CurrentUser = 0x80000001, LocalMachine = 0x80000002 };

struct RegistryValue {
  /// The types that are read, by the registry's own numbers (REG_SZ, REG_EXPAND_SZ, REG_DWORD).
  static constexpr std::uint32_t text_type = 1, expandable_text_type = 2, number_type = 4;

  std::uint32_t type = text_type;
  /// For text: the characters as stored (UTF-8), the terminating NUL included where one is stored.
  std::string text;
  std::uint32_t number = 0;
};

/// The registry as the helpers need it. Key paths are relative to the root, with backslashes; an empty one is the root
/// itself. Names ignore case.
class Registry {
 public:
  virtual ~Registry() = default;
  /// True where the key can be read.
  virtual bool key_exists(RootKey root, std::string_view key) const = 0;
  /// Nothing where key or value is missing; a value of another type comes with its type and no content.
  virtual std::optional<RegistryValue> read(RootKey root, std::string_view key, std::string_view name) const = 0;
  enum class CreateResult { Created, Existed, Failed };
  /// Creates the key and the ones above it, non-volatile, and flushes it. A registry that knows no classes ignores
  /// `class_name`. Failed: the name cannot be stored. Raises 75, with place and reason, where writing fails.
  virtual CreateResult create_key(RootKey root, std::string_view key, std::string_view class_name) = 0;
  /// Writes REG_SZ; the key must exist. Refused (false, nothing written): a text that does not fit CP1252 or holds a
  /// NUL. Raises 75, with place and reason, where writing fails.
  virtual bool write_text(RootKey root, std::string_view key, std::string_view name, std::string_view value) = 0;
  /// True where values of the key could be written; of a key that is missing, where it could be made. Only a look.
  virtual bool can_write(RootKey root, std::string_view key) const = 0;
};

/// True when the key can be opened for reading.
bool KeyExists(const Registry& registry, RootKey root, std::string_view key);

/// True when the value was found and read; `output` is replaced only when the trimmed value is not empty. A number
/// arrives as its decimal text, signed. A value of another type is false.
bool ReadRegValue(const Registry& registry, RootKey root, std::string_view key, std::string_view name,
                  std::string& output);

/// True only when the key did not exist and was created.
bool CreateRegKey(Registry& registry, RootKey root, std::string_view key, std::string_view class_name);

/// Writes text, creating the key where it is missing; an empty value is stored as one blank. True when written.
bool WriteRegString(Registry& registry, RootKey root, std::string_view key, std::string_view name,
                    std::string_view value);

/// The text without leading and trailing blanks and characters below 20; empty where it begins with NUL.
std::string vtrim(std::string_view text);

}  // namespace support

// Registry access of the wizard: a few forgiving helpers over a port that speaks to the real registry or to a hive
// kept as a text file. Helpers never throw; a failure is a false result and an untouched output.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace support {

enum class RootKey : std::uint32_t { CurrentUser = 0x80000001, LocalMachine = 0x80000002 };

/// Registry value types that are read: text (REG_SZ 1, REG_EXPAND_SZ 2) and 32-bit numbers (REG_DWORD 4).
struct RegistryValue {
  std::uint32_t type = 1;
  /// For text: the characters as stored (UTF-8), the terminating NUL included where one is stored.
  std::string text;
  std::uint32_t number = 0;
};

/// The registry as the helpers need it. Key paths are relative to the root, with backslashes; names ignore case.
class Registry {
 public:
  virtual ~Registry() = default;
  virtual bool key_exists(RootKey root, std::string_view key) const = 0;
  /// Nothing where key or value is missing; a value of another type comes with its type and no content.
  virtual std::optional<RegistryValue> read(RootKey root, std::string_view key, std::string_view name) const = 0;
  enum class CreateResult { Created, Existed, Failed };
  /// Creates the key and the ones above it, non-volatile, and flushes it. A registry that knows no classes ignores
  /// `class_name`. Failed: the name cannot be stored. RuntimeError, with place and reason, where writing fails.
  virtual CreateResult create_key(RootKey root, std::string_view key, std::string_view class_name) = 0;
  /// Writes REG_SZ; the key must exist. Refused (false, nothing written): a text that does not fit CP1252 or holds a
  /// NUL. RuntimeError, with place and reason, where writing fails.
  virtual bool write_text(RootKey root, std::string_view key, std::string_view name, std::string_view value) = 0;
};

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

/// Lets pending window messages through where input waits; does nothing without a window. Used inside long loops.
void YieldToInput();

}  // namespace support

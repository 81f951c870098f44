// The wizard's access to the registry: a few forgiving functions over a port, behind which stands the real registry or
// a hive kept as a text file. The functions never raise. If one fails, it returns false and leaves its output as it
// was.
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

/// The port. Key paths are relative to the root and have backslashes; an empty one is the root itself. Names are
/// compared without regard to case.
class Registry {
 public:
  virtual ~Registry() = default;
  /// True if the key can be read.
  virtual bool key_exists(RootKey root, std::string_view key) const = 0;
  /// Nothing if key or value is missing. A value of another type is returned with its type and without content.
  virtual std::optional<RegistryValue> read(RootKey root, std::string_view key, std::string_view name) const = 0;
  enum class CreateResult { Created, Existed, Failed };
  /// Creates the key and the keys above it, non-volatile, and flushes it. A registry without classes ignores
  /// `class_name`. `Failed` means that the name cannot be stored. Raises 75, with place and reason, if writing fails.
  virtual CreateResult create_key(RootKey root, std::string_view key, std::string_view class_name) = 0;
  /// Writes REG_SZ; the key must exist. Returns false and writes nothing if the text does not fit CP1252 or holds a
  /// NUL. Raises 75, with place and reason, if writing fails.
  virtual bool write_text(RootKey root, std::string_view key, std::string_view name, std::string_view value) = 0;
  /// True if values of the key could be written or, for a missing key, if it could be made. Only looks.
  virtual bool can_write(RootKey root, std::string_view key) const = 0;
};

/// True when the key can be opened for reading.
bool KeyExists(const Registry& registry, RootKey root, std::string_view key);

/// True if the value was found and read. `output` is replaced only if the trimmed value is not empty. A number becomes
/// its decimal text, signed. A value of another type gives false.
bool ReadRegValue(const Registry& registry, RootKey root, std::string_view key, std::string_view name,
                  std::string& output);

/// True only if the key did not exist and was created.
bool CreateRegKey(Registry& registry, RootKey root, std::string_view key, std::string_view class_name);

/// Writes a text and creates the key if it is missing; an empty value is stored as one blank. True if it was written.
bool WriteRegString(Registry& registry, RootKey root, std::string_view key, std::string_view name,
                    std::string_view value);

/// The text without leading and trailing blanks and characters below code 20; empty if it begins with NUL.
std::string vtrim(std::string_view text);

}  // namespace support

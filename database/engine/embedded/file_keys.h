// Keys of encrypted files. Deriving one takes about a tenth of a second, so the process keeps those that fitted, by
// salt and password, and wipes them at its end.
#pragma once

#include <array>
#include <string>
#include <string_view>

#include "database/engine/embedded/key_derivation.h"

namespace engine::embedded {

using FileSalt = std::array<unsigned char, SQLCIPHER4_SALT_SIZE>;

using KeyBytes = std::array<unsigned char, SQLCIPHER4_KEY_SIZE>;

/// A derived key together with the salt that stands at the beginning of its file.
class FileKey {
 public:
  /// From the process's memory, from those that are derived ahead, else derived.
  FileKey(std::string_view password, const FileSalt& salt);
  ~FileKey();
  FileKey(const FileKey&) = delete;
  FileKey& operator=(const FileKey&) = delete;

  /// Keeps the key for the next opening. Called when it has proved right. One that was derived ahead is not kept: it
  /// lives as long as its file is expected.
  void remember(std::string_view password) const;

  const FileSalt& salt() const noexcept { return salt_; }
  const KeyBytes& key() const noexcept { return key_; }

 private:
  FileSalt salt_;
  KeyBytes key_;
  bool ahead_ = false;
};

/// True where the process keeps the key.
bool is_key_known(std::string_view password, const FileSalt& salt);
/// Wipes the keys that the process keeps: each file's is derived anew at its next opening.
void forget_known_keys() noexcept;

/// False where a file that begins so could be taken for a text, for one of zeros, or for another engine's.
bool is_telling_salt(const FileSalt& salt) noexcept;

/// A random salt for a new file, and a telling one.
FileSalt new_salt();

}  // namespace engine::embedded

// Keys of encrypted files. Deriving one takes about a tenth of a second, so the process keeps those that fitted, by
// salt and password, and wipes them at its end.
#pragma once

#include <array>
#include <string>
#include <string_view>

#include "database/engine/embedded/key_derivation.h"

namespace engine::embedded {

using FileSalt = std::array<unsigned char, SQLCIPHER4_SALT_SIZE>;

/// A derived key together with the salt that stands at the beginning of its file.
class FileKey {
 public:
  /// From the process's memory, else derived.
  FileKey(std::string_view password, const FileSalt& salt);
  ~FileKey();
  FileKey(const FileKey&) = delete;
  FileKey& operator=(const FileKey&) = delete;

  /// Keeps the key for the next opening. Called when it has proved right.
  void remember(std::string_view password) const;

  const FileSalt& salt() const noexcept { return salt_; }
  const std::array<unsigned char, SQLCIPHER4_KEY_SIZE>& key() const noexcept { return key_; }

 private:
  FileSalt salt_;
  std::array<unsigned char, SQLCIPHER4_KEY_SIZE> key_;
};

/// A random salt for a new file.
FileSalt new_salt();

}  // namespace engine::embedded

// Keys of encrypted files. Deriving one takes about a tenth of a second, so the process keeps the keys that fitted, by
// salt and password, and wipes them at its end.
#pragma once

#include <array>
#include <string>
#include <string_view>

#include "database/engine/embedded/key_derivation.h"

namespace engine::embedded {

using FileSalt = std::array<unsigned char, SQLCIPHER4_SALT_SIZE>;

using KeyBytes = std::array<unsigned char, SQLCIPHER4_KEY_SIZE>;

/// A derived key together with the salt from the beginning of its file.
class FileKey {
 public:
  /// Takes the key from those that the process keeps, else from those that are derived ahead, else derives it.
  FileKey(std::string_view password, const FileSalt& salt);
  ~FileKey();
  FileKey(const FileKey&) = delete;
  FileKey& operator=(const FileKey&) = delete;

  /// Keeps the key for the next opening. Call it when the key has proved right. A key that was derived ahead is not
  /// kept here: it lives as long as its file is expected to be opened.
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
/// Wipes the keys that the process keeps. The next opening of each file derives its key anew.
void forget_known_keys() noexcept;

/// False where a file with this salt at its beginning could be taken for a text, for zeros, or for a file of another
/// engine.
bool is_telling_salt(const FileSalt& salt) noexcept;

/// A random salt for a new file. is_telling_salt() is true of it.
FileSalt new_salt();

}  // namespace engine::embedded

#include "database/engine/embedded/file_keys.h"

#include <sqlite3.h>

#include <algorithm>
#include <list>

#include "database/engine/embedded/keys_ahead.h"

namespace engine::embedded {
namespace {

struct KnownKey {
  KnownKey(std::string_view password_text, const FileSalt& file_salt, const KeyBytes& derived)
      : password(password_text), salt(file_salt), key(derived) {}
  KnownKey(const KnownKey&) = delete;
  KnownKey& operator=(const KnownKey&) = delete;
  ~KnownKey() {
    wipe_memory(password.data(), password.size());
    wipe_memory(key.data(), key.size());
  }

  std::string password;
  FileSalt salt;
  KeyBytes key;
};

std::list<KnownKey>& known_keys() {
  static std::list<KnownKey> keys;
  return keys;
}

const KnownKey* find_known(std::string_view password, const FileSalt& salt) {
  const auto found = std::ranges::find_if(
      known_keys(), [&](const KnownKey& known) { return known.salt == salt && known.password == password; });
  return found == known_keys().end() ? nullptr : &*found;
}

}  // namespace

FileKey::FileKey(std::string_view password, const FileSalt& salt) : salt_(salt) {
  if (const KnownKey* known = find_known(password, salt)) {
    key_ = known->key;
    return;
  }
  ahead_ = KeysAhead::find(password, salt_, key_);
  if (ahead_) return;
  sqlcipher4_derive_key(reinterpret_cast<const unsigned char*>(password.data()), password.size(), salt_.data(),
                        key_.data());
}

FileKey::~FileKey() { wipe_memory(key_.data(), key_.size()); }

void FileKey::remember(std::string_view password) const {
  if (!ahead_ && !find_known(password, salt_)) known_keys().emplace_front(password, salt_, key_);
}

bool is_key_known(std::string_view password, const FileSalt& salt) { return find_known(password, salt) != nullptr; }

void forget_known_keys() noexcept { known_keys().clear(); }

bool is_telling_salt(const FileSalt& salt) noexcept {
  const std::string_view bytes{reinterpret_cast<const char*>(salt.data()), salt.size()};
  const auto is_printable = [](char c) { return (c >= ' ' && c <= '~') || c == '\r' || c == '\n' || c == '\t'; };
  const auto is_first = [&](char c) { return c == bytes.front(); };
  return !std::ranges::all_of(bytes, is_printable) && !std::ranges::all_of(bytes, is_first) &&
         !bytes.starts_with("SQLite") && !bytes.substr(4).starts_with("Standard");
}

FileSalt new_salt() {
  FileSalt salt;
  do {
    sqlite3_randomness(static_cast<int>(salt.size()), salt.data());
  } while (!is_telling_salt(salt));
  return salt;
}

}  // namespace engine::embedded

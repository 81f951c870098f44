#include "bench/straight.h"

#include <array>
#include <fstream>
#include <stdexcept>

#include "database/engine/embedded/jet_sql/jet_sql.h"
#include "database/engine/embedded/jet_sql/sqlite_functions.h"
#include "database/engine/embedded/key_derivation.h"

namespace bench {
namespace {

void append_hex(std::string& text, const unsigned char* bytes, std::size_t count) {
  constexpr std::string_view digits = "0123456789abcdef";
  for (std::size_t i = 0; i < count; ++i) {
    text += digits[bytes[i] >> 4];
    text += digits[bytes[i] & 15];
  }
}

}  // namespace

void check(sqlite3* database, int result) {
  if (result != SQLITE_OK && result != SQLITE_ROW && result != SQLITE_DONE) {
    throw std::runtime_error(sqlite3_errmsg(database));
  }
}

StraightDatabase open_straight(const std::string& path, std::string_view key) {
  sqlite3* handle = nullptr;
  const int result = sqlite3_open_v2(path.c_str(), &handle, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr);
  StraightDatabase database(handle);
  check(handle, result);
  sqlite3mc_config(handle, "cipher", sqlite3mc_cipher_index("sqlcipher"));
  sqlite3mc_config_cipher(handle, "sqlcipher", "legacy", 4);
  check(handle, sqlite3_key(handle, key.data(), static_cast<int>(key.size())));
  engine::embedded::jet_sql::register_functions(handle);
  return database;
}

StraightStatement prepare(sqlite3* database, std::string_view sql) {
  sqlite3_stmt* statement = nullptr;
  check(database, sqlite3_prepare_v2(database, sql.data(), static_cast<int>(sql.size()), &statement, nullptr));
  return StraightStatement(statement);
}

void execute(sqlite3* database, const std::string& sql) {
  check(database, sqlite3_exec(database, sql.c_str(), nullptr, nullptr, nullptr));
}

std::string derived_key(const std::string& path, std::string_view password) {
  std::array<unsigned char, SQLCIPHER4_SALT_SIZE> salt{};
  std::ifstream file(path, std::ios::binary);
  if (!file.read(reinterpret_cast<char*>(salt.data()), salt.size())) throw std::runtime_error(path + ": no salt");
  std::array<unsigned char, SQLCIPHER4_KEY_SIZE> key{};
  sqlcipher4_derive_key(reinterpret_cast<const unsigned char*>(password.data()), password.size(), salt.data(),
                        key.data());
  std::string text = "x'";
  append_hex(text, key.data(), key.size());
  append_hex(text, salt.data(), salt.size());
  return text + "'";
}

}  // namespace bench

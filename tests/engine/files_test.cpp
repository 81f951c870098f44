#include <sqlite3.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <fstream>

#include "database/engine/embedded/file_keys.h"
#include "database/engine/embedded/session_scope.h"
#include "tests/engine/test_database.h"

namespace engine::test {
namespace {

using testing::Not;

class Files : public EngineTest {};

/// A sound SQLite file of one page without tables, as another program makes it.
std::string foreign_file() {
  std::string page(512, '\0');
  const auto put = [&](std::size_t place, std::string_view bytes) { page.replace(place, bytes.size(), bytes); };
  put(0, std::string_view("SQLite format 3\0\2\0\1\1\0\x40\x20\x20\0\0\0\1\0\0\0\1", 32));
  put(47, "\4");    // schema format
  put(59, "\1");    // UTF-8
  put(95, "\1");    // valid for change 1
  put(100, "\xd");  // an empty leaf
  put(105, "\2");   // whose cells begin at 512
  return page;
}

TEST_F(Files, AreNotThereBeforeTheFirstCommit) {
  create();
  EXPECT_FALSE(exists()) << "closed without a change";
  {
    const auto database = create();
    EXPECT_EQ(database->table_defs().count(), 0);
    EXPECT_EQ(error_number([&] { database->open_recordset("things"); }), 3078);
    EXPECT_FALSE(exists());
    Transaction transaction{*database};
    add_things(*database);
  }
  EXPECT_FALSE(exists()) << "rolled back";
  {
    const auto database = create();
    Transaction transaction{*database};
    transaction.commit();
  }
  EXPECT_TRUE(exists()) << "an empty transaction makes an empty database";
  EXPECT_EQ(open()->table_defs().count(), 0);
}

TEST_F(Files, StartAnewAfterARollback) {
  const auto database = create("test.das", "geheim");
  database->begin_transaction();
  add_things(*database);
  database->rollback_transaction();
  EXPECT_FALSE(exists());
  EXPECT_EQ(database->table_defs().count(), 0);
  add_things(*database);
  EXPECT_EQ(open("test.das", "geheim")->table_defs().count(), 1);
}

TEST_F(Files, AreRefusedWhereTheyCannotBeCreatedOrOpened) {
  add_things(*create());
  add_things(*create("secret.das", "geheim"));
  write("empty.das", "");
  write("text.das", std::string(8192, 'x'));
  write("short.das", "SQLite format 3");
  write("zeros.das", std::string(8192, '\0'));
  write("broken.das", std::string("SQLite format 3\0", 16) + std::string(8176, '\x5a'));
  write("foreign.das", foreign_file());
  write("cut.das", content("secret.das").substr(0, 5000));
  write("jet.mdb", std::string("\0\1\0\0Standard Jet DB\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0", 34) + std::string(4096, '\0'));
  struct Case {
    std::string name;
    std::string password;
    int number;
  };
  for (const Case& row :
       {Case{"missing.das", "", 3024}, Case{"nowhere\\test.das", "", 3044}, Case{"empty.das", "", 3343},
        Case{"text.das", "geheim", 3343}, Case{"short.das", "", 3343}, Case{"zeros.das", "x", 3343},
        Case{"broken.das", "", 3343}, Case{"foreign.das", "", 3343}, Case{"cut.das", "geheim", 3343},
        Case{"jet.mdb", "", 3343}, Case{"secret.das", "", 3031}, Case{"secret.das", "Geheim", 3031},
        Case{"secret.das", std::string(21, 'x'), 3031}, Case{"test.das", "unasked", 0}}) {
    const std::string before = content(row.name);
    EXPECT_EQ(error_number([&] {
                engine().open_database(path("") + row.name, false, false,
                                       row.password.empty() ? "" : "MS Access;pwd=" + row.password);
              }),
              row.number)
        << row.name << " with password \"" << row.password << '"';
    EXPECT_EQ(content(row.name), before) << row.name << " is left as it was";
  }
  EXPECT_EQ(error_number([&] { create("test.das"); }), 3204);
  EXPECT_EQ(error_number([&] { engine().create_database(path("nowhere") + "\\a.das", locale_general, version_30); }),
            3044);
  try {
    open("jet.mdb");
  } catch (const support::RuntimeError& error) {
    EXPECT_THAT(error.what(), HasSubstr("DAO.DBEngine.36"));
  }
}

using Handle = std::unique_ptr<sqlite3, int (*)(sqlite3*)>;

/// The cipher for the key that follows.
void choose_cipher(sqlite3* handle, int page_size) {
  sqlite3mc_config(handle, "cipher", sqlite3mc_cipher_index("sqlcipher"));
  sqlite3mc_config_cipher(handle, "sqlcipher", "legacy", 4);
  sqlite3mc_config_cipher(handle, "sqlcipher", "legacy_page_size", page_size);
}

using Bytes = std::array<unsigned char, 16>;

/// The key of this password and salt as SQLite takes it. It is derived by us, so that a test need not derive it.
std::string key_text(const std::string& password, const Bytes& salt) {
  const embedded::FileKey key{password, salt};
  std::string text = "x'";
  const auto append = [&](const auto& bytes) {
    for (const unsigned char byte : bytes) {
      std::array<char, 3> digits{};
      std::snprintf(digits.data(), digits.size(), "%02x", byte);
      text += digits.data();
    }
  };
  append(key.key());
  append(salt);
  return text + "'";
}

/// Opens a file as other programs do with the same cipher and the text of a key.
Handle open_elsewhere(const std::filesystem::path& file, const std::string& key, int page_size = 4096) {
  sqlite3* handle = nullptr;
  EXPECT_EQ(sqlite3_open(file.string().c_str(), &handle), SQLITE_OK);
  choose_cipher(handle, page_size);
  EXPECT_EQ(sqlite3_key(handle, key.data(), static_cast<int>(key.size())), SQLITE_OK);
  return {handle, sqlite3_close};
}

void encrypt(const std::filesystem::path& file, const std::string& password, int page_size) {
  Bytes salt{};
  sqlite3_randomness(static_cast<int>(salt.size()), salt.data());
  const Handle handle = open_elsewhere(file, key_text(password, salt), page_size);
  ASSERT_EQ(sqlite3_exec(handle.get(), "CREATE TABLE t (n)", nullptr, nullptr, nullptr), SQLITE_OK);
}

TEST_F(Files, OfThisCipherSayWhyTheyAreNotOpenedWithTheRightPassword) {
  const std::string right = "geheim", twenty_one = "123456789012345678901";
  struct Case {
    std::string password;
    int page_size;
    std::string given;
    int number;
    const char* text;
  };
  const Case cases[] = {
      {right, 1024, right, 3343, "in pages of 1024 bytes"},
      {right, 8192, right, 3343, "in pages of 8192 bytes"},
      {right, 65536, right, 3343, "in pages of 65536 bytes"},
      {twenty_one, 1024, twenty_one, 3343, "in pages of 1024 bytes"},
      {twenty_one, 4096, twenty_one, 3343, "more than 20 characters"},
      {twenty_one, 4096, twenty_one + "x", 3031, "valid password"},
      {right, 8192, "Geheim", 3031, "valid password"},
  };
  for (const Case& row : cases) {
    encrypt(host_path(), row.password, row.page_size);
    const std::string before = content();
    try {
      open("test.das", row.given);
      ADD_FAILURE() << row.text;
    } catch (const support::RuntimeError& error) {
      EXPECT_EQ(error.number(), row.number) << row.page_size << ' ' << row.given;
      EXPECT_THAT(error.what(), HasSubstr(row.text)) << row.page_size << ' ' << row.given;
    }
    EXPECT_EQ(content(), before);
    std::filesystem::remove(host_path());
  }
}

TEST_F(Files, WithAPasswordShowNothingOfTheirContent) {
  {
    const auto database = create("test.das", "geheim");
    add_things(*database);
    add_rows(*database, 3);
  }
  for (const std::string_view word : {"Findling", "things", "SQLite"}) EXPECT_THAT(content(), Not(HasSubstr(word)));
  EXPECT_THAT(column(*open("test.das", "geheim"), "things", "name"), ElementsAre("Findling", "Findling", "Findling"));
  open("test.das", "geheim")->new_password("geheim", "");
  EXPECT_THAT(content(), HasSubstr("Findling"));
  open()->new_password("", "eins");
  EXPECT_THAT(content(), Not(HasSubstr("Findling")));
}

Bytes salt_of(std::string_view text) {
  Bytes salt{};
  std::ranges::copy(text, salt.begin());
  return salt;
}

/// Encrypts the file again, so that it begins with this salt.
void give_salt(const std::filesystem::path& file, const std::string& password, const Bytes& salt) {
  Bytes old_salt{};
  std::ifstream(file, std::ios::binary).read(reinterpret_cast<char*>(old_salt.data()), old_salt.size());
  const Handle handle = open_elsewhere(file, key_text(password, old_salt));
  choose_cipher(handle.get(), 4096);
  std::string key = key_text(password, salt);
  ASSERT_EQ(sqlite3_rekey(handle.get(), key.data(), static_cast<int>(key.size())), SQLITE_OK);
}

TEST_F(Files, OpenWhateverTheirSaltLooksLike) {
  constexpr std::string_view salts[] = {"sixteen letters!", "SQLite format 4!",
                                        std::string_view("\0\1\0\0Standard Jet", 16)};
  for (const std::string_view salt : salts) {
    add_things(*create("test.das", "geheim"));
    give_salt(host_path(), "geheim", salt_of(salt));
    ASSERT_TRUE(content().starts_with(salt));
    EXPECT_EQ(error_number([&] { open("test.das", "geheim"); }), 0) << salt;
    for (const char* const wrong : {"", "Geheim"}) {
      EXPECT_EQ(error_number([&] { open("test.das", wrong); }), 3343) << salt << " may be anything";
    }
    std::filesystem::remove(host_path());
    EXPECT_FALSE(embedded::is_telling_salt(salt_of(salt))) << salt << " is not given to a new file";
  }
  EXPECT_FALSE(embedded::is_telling_salt(Bytes{}));
  EXPECT_TRUE(embedded::is_telling_salt(salt_of("fifteen letters\x80")));
}

TEST_F(Files, KeepWhatWasReadInMemoryAgainAfterALargeWrite) {
  add_things(*create());
  const auto session = embedded::Session::open(host_path().string(), "", {});
  // Each spelling is prepared as a new statement, which returns the current value.
  EXPECT_EQ(session->connection().integer("PRAGMA cache_size"), -131072);
  for (const bool done : {true, false}) {
    {
      embedded::AtomicChange change{*session};
      EXPECT_EQ(session->connection().integer(done ? " PRAGMA cache_size" : "  PRAGMA cache_size"), -2048);
      if (done) change.done();
    }
    EXPECT_EQ(session->connection().integer(done ? "PRAGMA cache_size " : "PRAGMA cache_size  "), -131072) << done;
  }
}

TEST_F(Files, InUseByAnotherHandleAreWaitedForAndThenRefused) {
  const auto first = create("test.das", "geheim");
  add_things(*first);
  {
    const auto second = open("test.das", "geheim");
    Transaction transaction{*first};
    add_rows(*first, 1);
    EXPECT_EQ(error_number([&] { second->begin_transaction(); }), 3045);
    EXPECT_EQ(error_number([&] { add_rows(*second, 1); }), 3045);
    EXPECT_THAT(column(*second, "things", "name"), ElementsAre()) << "reads what is committed";
    transaction.commit();
    EXPECT_THAT(column(*second, "things", "name"), ElementsAre("Findling"));
  }
  first->close();
  const auto exclusive = open("test.das", "geheim", false, true);
  EXPECT_EQ(error_number([&] { open("test.das", "geheim"); }), 3045);
  exclusive->close();
  EXPECT_EQ(error_number([&] { open("test.das", "geheim"); }), 0);
}

}  // namespace
}  // namespace engine::test

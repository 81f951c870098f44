// A database file in which some bytes were changed. It opens or is refused, and reading and writing it ends in rows or
// in errors with a number. The first byte of an input chooses the file (odd: the one with a password). Each change
// takes three bytes: two of offset and one that is combined with the byte there. If that one is 255, the file is cut
// off at the offset.
#include <iterator>
#include <memory>

#include "database/engine/embedded/embedded_engine.h"
#include "fuzz/target.h"
#include "support/error.h"
#include "support/file_system.h"

namespace {

constexpr std::string_view password = "geheim";

struct Files {
  fuzz::ScratchFolder folder;
  std::unique_ptr<engine::Engine> engine = engine::embedded::create_embedded_engine(std::chrono::milliseconds(10));
  std::string plain = make("plain", {}), encrypted = make("encrypted", password);

  std::string windows(const std::string& name) const {
    return support::host_file_system().windows_path((folder.path() / name).string());
  }

 private:
  std::string make(const std::string& name, std::string_view word) const {
    const auto database = engine->create_database(windows(name), {}, 0);
    if (!word.empty()) database->new_password({}, word);
    database->execute("CREATE TABLE patdat (id COUNTER CONSTRAINT k PRIMARY KEY, name TEXT(50), n MEMO, d DATETIME)");
    database->execute("CREATE INDEX byname ON patdat (name)");
    for (int i = 0; i < 20; ++i) {
      database->execute("INSERT INTO patdat (name, n, d) VALUES ('Müller', '" + std::string(200, 'n') + "', Now())");
    }
    database->close();
    std::ifstream file(folder.path() / name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }
};

void damage(std::string& bytes, const std::uint8_t* data, std::size_t size) {
  for (std::size_t i = 0; i + 2 < size; i += 3) {
    const std::size_t offset = (std::size_t{data[i]} << 8U) + data[i + 1];
    if (offset >= bytes.size()) continue;
    if (data[i + 2] == 255) return bytes.resize(offset);
    bytes[offset] = static_cast<char>(static_cast<unsigned char>(bytes[offset]) ^ data[i + 2]);
  }
}

void read_all(engine::Database& database, const std::string& source) {
  const auto rows = database.open_recordset(source);
  for (int row = 0; row < 100 && !rows->eof(); ++row, rows->move_next()) {
    for (std::int32_t field = 0; field < rows->field_count(); ++field) static_cast<void>(rows->value(field));
  }
}

/// Runs `call`; each of its errors must have a number.
template <typename Call>
void attempt(Call&& call) {
  try {
    call();
  } catch (const support::RuntimeError& error) {
    fuzz::promise(error.number() != 0, "an error has a number");
  }
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const Files files;
  if (size == 0) return 0;
  const bool with_password = data[0] % 2 != 0;
  std::string bytes = with_password ? files.encrypted : files.plain;
  damage(bytes, data + 1, size - 1);
  files.folder.write("damaged", bytes);
  attempt([&] {
    const auto database =
        files.engine->open_database(files.windows("damaged"), false, false,
                                    with_password ? "MS Access;pwd=" + std::string(password) : std::string());
    attempt([&] { read_all(*database, "patdat"); });
    attempt([&] { read_all(*database, "SELECT name, d FROM patdat WHERE name LIKE 'M*' ORDER BY d"); });
    attempt([&] { database->execute("UPDATE patdat SET name = 'x' WHERE id > 3"); });
    attempt([&] { database->execute("CREATE TABLE more (id LONG)"); });
    attempt([&] { database->execute("DROP TABLE patdat"); });
  });
  return 0;
}

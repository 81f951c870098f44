#include "database/engine/embedded/plain_file.h"

#include <fstream>
#include <limits>
#include <utility>

#include "database/engine/embedded/connection.h"
#include "database/engine/embedded/database_file.h"
#include "database/engine/embedded/platform_file.h"
#include "database/engine/engine_error.h"
#include "support/host_path.h"

namespace engine::embedded {
namespace {

constexpr std::string_view plain_beginning{"SQLite format 3\0", 16};
constexpr auto no_database = error_number::unknown_format;
constexpr auto cannot_convert = error_number::conversion;

Value plain_number(std::int64_t number) {
  if (number >= std::numeric_limits<std::int32_t>::min() && number <= std::numeric_limits<std::int32_t>::max()) {
    return static_cast<std::int32_t>(number);
  }
  constexpr std::int64_t exact_to = std::int64_t{1} << 53;
  if (number < -exact_to || number > exact_to) raise(cannot_convert);
  return static_cast<double>(number);
}

class PlainTableInsert : public PlainInsert {
 public:
  explicit PlainTableInsert(PooledStatement statement) : statement_(std::move(statement)) {}
  void add(std::span<const Value> values) override {
    statement_->reset();
    int parameter = 0;
    for (const Value& value : values) statement_->bind(++parameter, value);
    statement_->run();
  }

 private:
  PooledStatement statement_;
};

class PlainTableRows : public PlainRows {
 public:
  explicit PlainTableRows(PooledStatement statement) : statement_(std::move(statement)) {}
  bool next() override { return statement_->step(); }
  Value value(int column) const override {
    switch (statement_->storage_class(column)) {
      case SQLITE_NULL:
        return Null{};
      case SQLITE_INTEGER:
        return plain_number(statement_->integer(column));
      case SQLITE_FLOAT:
        return statement_->number(column);
      case SQLITE_TEXT:
        return std::string(statement_->text(column));
      default:
        raise(cannot_convert);
    }
  }

 private:
  PooledStatement statement_;
};

class SqliteFile : public PlainFile {
 public:
  SqliteFile(const std::string& host_path, bool read_only) : connection_(host_path, {.read_only = read_only}) {
    if (!connection_.first_read()) raise(no_database);
    connection_.run("BEGIN");
    // Memory does not grow with the length of a table.
    connection_.use_small_cache();
  }
  void run(std::string_view sql) override { connection_.run(sql); }
  std::unique_ptr<PlainInsert> insert(std::string_view sql) override {
    return std::make_unique<PlainTableInsert>(connection_.statement(sql));
  }
  std::unique_ptr<PlainRows> rows(std::string_view sql) override {
    return std::make_unique<PlainTableRows>(connection_.statement(sql));
  }
  bool has_table(std::string_view name) override {
    const auto found = connection_.statement(
        "SELECT 1 FROM sqlite_schema WHERE type='table' AND name=? COLLATE NOCASE AND rootpage>0");
    return found->with(name).step();
  }

 private:
  Connection connection_;
};

}  // namespace

std::unique_ptr<PlainFile> create_plain_file(const std::string& host_path) {
  create_private_file(host_path);
  return std::make_unique<SqliteFile>(host_path, false);
}

void finish_plain_file(std::unique_ptr<PlainFile> file) { file->run("COMMIT"); }

std::unique_ptr<PlainFile> open_plain_file(const std::string& host_path) {
  return std::make_unique<SqliteFile>(host_path, true);
}

bool is_plain_file(const std::string& host_path) {
  std::ifstream file(support::std_path(host_path), std::ios::binary);
  std::string beginning(plain_beginning.size(), ' ');
  file.read(beginning.data(), static_cast<std::streamsize>(beginning.size()));
  return file && beginning == plain_beginning;
}

}  // namespace engine::embedded

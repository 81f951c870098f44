// A folder for each test, and databases in it.
#pragma once

#include <gmock/gmock.h>

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "database/engine/engine.h"

namespace engine::test {

// What most of these tests use.
using testing::ElementsAre;
using testing::HasSubstr;

/// The number of the error that the call raises; 0 if it raises none.
template <typename Call>
int error_number(Call&& call) {
  try {
    call();
    return 0;
  } catch (const support::RuntimeError& error) {
    return error.number();
  }
}

/// The embedded engine, which waits only 50 ms for a file in use.
std::unique_ptr<Engine> impatient_engine();

class EngineTest : public testing::Test {
 protected:
  explicit EngineTest(std::unique_ptr<Engine> engine = impatient_engine());
  ~EngineTest() override;

  /// Windows path and host path of a file in the test's folder.
  std::string path(std::string_view name = "test.das") const;
  std::filesystem::path host_path(std::string_view name = "test.das") const { return folder_ / name; }
  bool exists(std::string_view name = "test.das") const { return std::filesystem::exists(host_path(name)); }
  std::string content(std::string_view name = "test.das") const;
  void write(std::string_view name, std::string_view bytes) const;

  Engine& engine() { return *engine_; }
  std::unique_ptr<Database> create(std::string_view name = "test.das", std::string_view password = {});
  std::unique_ptr<Database> open(std::string_view name = "test.das", std::string_view password = {},
                                 bool read_only = false, bool exclusive = false);

  /// Changes a file behind the engine's back.
  void sqlite(const std::string& sql, std::string_view name = "test.das") const;

  /// A table `things`: id (AutoNumber), name (Text 10), amount (Integer, default 7), note (Memo, takes zero length).
  static void add_things(Database& database);

 private:
  std::filesystem::path folder_;
  std::unique_ptr<Engine> engine_;
};

/// Adds rows to `things`, each with the name "Findling", which can be searched for in the file.
void add_rows(Database& database, int count);

/// The values of one column, as text; "NULL" for Null.
std::vector<std::string> column(Database& database, std::string_view source, std::string_view field);

}  // namespace engine::test

#include "database/engine/choice/engine_choice.h"

#include "tests/engine/test_database.h"

namespace engine::test {
namespace {

/// Raises an error that shows that this engine was asked.
class AskedEngine : public Engine {
 public:
  std::unique_ptr<Database> create_database(std::string_view, std::string_view, std::int32_t) override { raise(); }
  std::unique_ptr<Database> open_database(std::string_view, bool, bool, std::string_view) override { raise(); }
  static constexpr int number = 4711;

 private:
  [[noreturn]] static void raise() { throw support::RuntimeError(number, "asked"); }
};

class EngineChoice : public EngineTest {};

TEST_F(EngineChoice, IsMadeByTheFile) {
  add_things(*create("ours.das"));
  add_things(*create("secret.das", "geheim"));
  write("jet.mdb", std::string("\0\1\0\0Standard Jet DB\0", 20) + std::string(4076, '\0'));
  write("text.das", "no database");
  const auto both = both_engines(std::make_unique<AskedEngine>(), impatient_engine());
  struct Case {
    std::string name;
    int number;
  };
  for (const Case& row : {Case{"ours.das", 0}, Case{"secret.das", 3031}, Case{"text.das", 3343},
                          Case{"missing.das", 3024}, Case{"jet.mdb", AskedEngine::number}}) {
    EXPECT_EQ(error_number([&] { both->open_database(path(row.name), false, false, ""); }), row.number) << row.name;
  }
  EXPECT_EQ(error_number([&] { both->create_database(path("new.das"), locale_general, version_30); }),
            AskedEngine::number)
      << "new files are the automation objects'";
}

TEST_F(EngineChoice, HasNoOtherIdentifiers) {
  for (EngineFactory factory : {open_engine, open_embedded_engine}) {
    EXPECT_NE(factory("DAO.DBEngine.36"), nullptr);
    EXPECT_NE(factory("dao.dbengine.35"), nullptr);
    EXPECT_EQ(error_number([&] { factory("DAO.DBEngine.99"); }), 429);
  }
  EXPECT_EQ(error_number([] { open_automation_engine("DAO.DBEngine.36"); }), 429) << "nothing is installed here";
}

}  // namespace
}  // namespace engine::test

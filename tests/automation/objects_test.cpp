#include <gmock/gmock.h>
#include <windows.h>
// Process memory needs windows.h before it.
#include <psapi.h>

#include <sstream>

#include "database/engine/choice/engine_choice.h"
#include "support/win32/dispatch.h"
#include "support/win32/handle.h"
#include "tests/automation/registration.h"
#include "tests/automation/server_library.h"
#include "tests/engine/test_database.h"

namespace automation_test {
namespace {

using engine::test::error_number;
using support::DispatchObject;
using support::Variant;
using testing::ElementsAre;
using testing::HasSubstr;

/// This is a base class, so that the server is registered before the next base class needs it.
struct Registered {
  Registration registration{{newer_engine}};
};

class Objects : private Registered, public engine::test::EngineTest {
 protected:
  Objects() : EngineTest(engine::open_automation_engine(newer_engine)) {}
};

/// The memory that this process alone has committed.
std::size_t private_bytes() {
  PROCESS_MEMORY_COUNTERS counters{};
  GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters);
  return counters.PagefileUsage;
}

TEST_F(Objects, AreReleasedInOrder) {
  const long before = living_objects();
  const std::size_t start = released_objects().size();
  {
    auto engine = engine::open_automation_engine(newer_engine);
    auto database = engine->create_database(path(), engine::locale_general, engine::version_30);
    engine.reset();
    add_things(*database);
    const auto rows = database->open_recordset("things");
    rows->add_new();
    rows->set_value("name", std::string("a"));
    rows->update();
    EXPECT_GT(living_objects(), before);
  }
  EXPECT_EQ(living_objects(), before);
  std::wistringstream released(released_objects().substr(start));
  std::vector<std::wstring> order;
  for (std::wstring kind; released >> kind;) {
    if (kind == L"Recordset" || kind == L"Database" || kind == L"Workspace" || kind == L"DBEngine")
      order.push_back(kind);
  }
  EXPECT_THAT(order, ElementsAre(L"Recordset", L"Database", L"Workspace", L"DBEngine"));
}

TEST_F(Objects, LeakNothingInTenThousandCalls) {
  constexpr int turns = 1'700, calls_per_turn = 6;
  static_assert(turns * calls_per_turn >= 10'000);
  const std::string text(4000, 'x');
  const auto database = create();
  add_things(*database);
  const auto rows = database->open_recordset("things");
  rows->add_new();
  rows->set_value("note", text);
  rows->update();
  rows->move_first();
  const auto field = database->create_table_def("new")->create_field("f", engine::DataType::Long);
  const auto call_all = [&](int times) {
    for (int i = 0; i < times; ++i) {
      EXPECT_EQ(std::get<std::string>(rows->value("note")).size(), text.size());
      field->set_validation_text(text);
      EXPECT_EQ(error_number([&] { database->open_recordset(text); }), 3078) << "whose description holds the text";
      EXPECT_EQ(database->table_defs().item("things")->fields().item("note")->size(), 0);
    }
  };
  call_all(100);
  const long objects = living_objects();
  const std::size_t bytes = private_bytes();
  ASSERT_GT(bytes, 0U);
  call_all(turns);
  EXPECT_EQ(living_objects(), objects);
  EXPECT_LT(private_bytes(), bytes + turns * text.size()) << "one text or more of each turn is left";
}

TEST_F(Objects, FailWithTheNumberAndTextOfTheEngine) {
  const auto database = create();
  try {
    database->open_recordset("nothing");
    ADD_FAILURE() << "there is no such table";
  } catch (const support::RuntimeError& error) {
    EXPECT_EQ(error.number(), 3078);
    EXPECT_THAT(error.what(), HasSubstr("'nothing'"));
  }
}

TEST_F(Objects, FailAsTheLanguageRuntimeSaysWhereTheyCannotBeCalled) {
  const support::Apartment apartment;
  const auto numbers = std::make_shared<support::MemberNumbers>();
  const DispatchObject object = DispatchObject::create(newer_engine, numbers);
  const Variant text = Variant::of_text("x"), number = Variant::of_long(1);
  EXPECT_EQ(error_number([&] { object.call(L"Nothing"); }), 438);
  EXPECT_EQ(error_number([&] { object.put(L"CreateWorkspace", text); }), 438);
  EXPECT_EQ(error_number([&] { object.call(L"CreateWorkspace", text); }), 450);
  EXPECT_EQ(error_number([&] { object.call(L"CreateWorkspace", number, text, text); }), 13);
  EXPECT_EQ(error_number([&] { object.call(L"CREATEWORKSPACE", text, text, text); }), 3001) << "its own error";
  EXPECT_EQ(error_number([&] { DispatchObject::create("Nothing.At.All", numbers); }), 429);
  EXPECT_EQ(error_number([&] { DispatchObject().call(L"Nothing"); }), 91);
}

TEST_F(Objects, OfAnotherEngineAreNotAppended) {
  const auto database = create();
  const auto other = engine::test::impatient_engine()->create_database(path("other.das"), "", 0);
  const auto table = other->create_table_def("t");
  table->fields().append(table->create_field("a", engine::DataType::Long));
  EXPECT_EQ(error_number([&] { database->table_defs().append(table); }), 3219);
}

TEST_F(Objects, OfOneDatabaseHaveTransactionsOfTheirOwn) {
  const auto first = create("first.das"), second = create("second.das");
  add_things(*first);
  add_things(*second);
  first->begin_transaction();
  second->execute("INSERT INTO things (name) VALUES ('kept')");
  first->execute("INSERT INTO things (name) VALUES ('gone')");
  first->rollback_transaction();
  EXPECT_EQ(engine::test::column(*first, "things", "name").size(), 0U);
  EXPECT_EQ(engine::test::column(*second, "things", "name").size(), 1U);
}

TEST_F(Objects, SaveACopyOfAFileThatIsTheirsAlone) {
  add_things(*create("test.das", "geheim"));
  EXPECT_EQ(error_number([&] { open("test.das", "geheim")->save_copy(path("copy.das")); }), 3251) << "not exclusively";
  write("taken.das", "something else");
  const auto database = open("test.das", "geheim", false, true);
  {
    engine::Transaction transaction{*database};
    EXPECT_EQ(error_number([&] { database->save_copy(path("copy.das")); }), 3246);
  }
  EXPECT_EQ(error_number([&] { database->save_copy(path("taken.das")); }), 3204);
  EXPECT_EQ(error_number([&] { database->save_copy(path("nowhere") + "\\copy.das"); }), 3044);
  {
    const support::FileHandle writer(CreateFileW(host_path().c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                                 nullptr, OPEN_EXISTING, 0, nullptr));
    EXPECT_EQ(error_number([&] { database->save_copy(path("copy.das")); }), 3045) << "somebody may write";
  }
  EXPECT_FALSE(exists("copy.das"));
  EXPECT_EQ(content("taken.das"), "something else");
  database->save_copy(path("copy.das"));
  EXPECT_EQ(content("copy.das"), content("test.das"));
  database->execute("INSERT INTO things (name) VALUES ('open again')");
  EXPECT_EQ(engine::test::column(*database, "things", "name").size(), 1U);
}

}  // namespace
}  // namespace automation_test

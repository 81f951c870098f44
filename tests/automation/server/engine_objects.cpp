#include "tests/automation/server/engine_objects.h"

#include <regex>

#include "database/engine/embedded/embedded_engine.h"
#include "tests/automation/server/jet_file.h"
#include "tests/automation/server/recordset_objects.h"

namespace test_server {
namespace {

constexpr std::int32_t fail_on_error = 128;
constexpr std::int32_t max_locks_per_file = 62;
std::int32_t locks_option = 0, locks_per_file = 0;

void expect(bool condition) {
  if (!condition) throw support::RuntimeError(3001, "Invalid argument.");
}

/// Refuses a statement in which `index` or `desc` stands without brackets in the place of a name, as in statements of
/// the program.
void refuse_words(const std::string& statement) {
  static const std::regex words(
      R"((\b(from|into|update|join)\s+index\b)|(\(desc\))|(\bdesc\s*(<|=))|(\b(set|select)\s+desc\b))",
      std::regex::icase);
  if (strict && std::regex_search(statement, words)) throw support::RuntimeError(3131, "Syntax error in FROM clause.");
}

/// Takes the password out of a statement that names another file, after checking it; the name alone remains. A
/// statement without a password is refused if the file has one.
std::string without_password(const std::string& statement) {
  static const std::regex by_name(" IN '([^']+)'"), by_connect(R"( IN '' \[(.*);DATABASE=(.*)\])");
  std::smatch found;
  const auto open = [](const std::string& path, const std::string& connect) {
    engine::embedded::create_embedded_engine()->open_database(database_of_jet_file(path), false, true, connect);
  };
  if (std::regex_search(statement, found, by_connect)) {
    open(found[2], found[1]);
    return found.prefix().str() + " IN '" + found[2].str() + "'";
  }
  if (std::regex_search(statement, found, by_name)) open(found[1], "");
  return statement;
}

}  // namespace

std::span<const Member<EngineObject>> EngineObject::members() {
  static constexpr Member<EngineObject> table[] = {
      {L"SetOption",
       [](EngineObject&, const Arguments& call) {
         locks_option = number_of(call[0]);
         locks_per_file = number_of(call[1]);
         return Variant();
       }},
      {L"CreateWorkspace",
       [](EngineObject&, const Arguments& call) {
         expect(!call.text(0).empty() && call.text(1) == "admin" && call.text(2).empty());
         return new_object<WorkspaceObject>();
       }},
  };
  return table;
}

WorkspaceObject::WorkspaceObject() : engine(engine::embedded::create_embedded_engine(std::chrono::milliseconds{50})) {}

Variant WorkspaceObject::for_each_database(void (engine::Database::*call)()) {
  for (const auto& held : databases_) {
    if (const auto database = held.lock()) ((*database).*call)();
  }
  return {};
}

Variant WorkspaceObject::add(std::unique_ptr<engine::Database> database, const std::string& path) {
  std::shared_ptr<engine::Database> shared = std::move(database);
  databases_.emplace_back(shared);
  return new_object<DatabaseObject>(std::move(shared), path);
}

std::span<const Member<WorkspaceObject>> WorkspaceObject::members() {
  using Self = WorkspaceObject;
  static constexpr Member<Self> table[] = {
      {L"CreateDatabase",
       [](Self& self, const Arguments& call) {
         expect(call.text(1) == engine::locale_general && number_of(call[2]) == engine::version_30);
         const std::string path = create_jet_file(call.text(0));
         return self.add(self.engine->create_database(path, call.text(1), number_of(call[2])), call.text(0));
       }},
      {L"OpenDatabase",
       [](Self& self, const Arguments& call) {
         const std::string path = database_of_jet_file(call.text(0));
         return self.add(self.engine->open_database(path, flag_of(call[1]), flag_of(call[2]), call.text(3)),
                         call.text(0));
       }},
      {L"BeginTrans",
       [](Self& self, const Arguments&) {
         // With its own default limit of locks, the engine would split a large transaction.
         expect(locks_option == max_locks_per_file && locks_per_file >= 1'000'000);
         return self.for_each_database(&engine::Database::begin_transaction);
       }},
      {L"CommitTrans",
       [](Self& self, const Arguments&) { return self.for_each_database(&engine::Database::commit_transaction); }},
      {L"Rollback",
       [](Self& self, const Arguments&) { return self.for_each_database(&engine::Database::rollback_transaction); }},
      {L"Close", [](Self& self, const Arguments&) { return self.for_each_database(&engine::Database::close); }},
  };
  return table;
}

const std::shared_ptr<TableList>& DatabaseObject::tables() {
  if (!tables_) tables_ = std::make_shared<TableList>(database);
  return tables_;
}

std::span<const Member<DatabaseObject>> DatabaseObject::members() {
  using Self = DatabaseObject;
  static constexpr Member<Self> table[] = {
      {L"Name", [](Self& self, const Arguments&) { return Variant::of_text(self.path); }},
      {L"NewPassword",
       [](Self& self, const Arguments& call) {
         self.database->new_password(call.text(0), call.text(1));
         return Variant();
       }},
      {L"CreateTableDef",
       [](Self& self, const Arguments& call) {
         return new_object<TableDefObject>(self.database->create_table_def(call.text(0)), self.tables());
       }},
      {L"TableDefs", [](Self& self, const Arguments&) { return new_object<TableDefsObject>(self.tables()); }},
      {L"OpenRecordset",
       [](Self& self, const Arguments& call) {
         refuse_words(call.text(0));
         return new_object<RecordsetObject>(
             Rows{self.database->open_recordset(call.text(0)), self.database, call.text(0)});
       }},
      {L"Execute",
       [](Self& self, const Arguments& call) {
         expect(number_of(call[1]) == fail_on_error);
         refuse_words(call.text(0));
         self.database->execute(with_databases(strict ? without_password(call.text(0)) : call.text(0)));
         return Variant();
       }},
      {L"RecordsAffected",
       [](Self& self, const Arguments&) { return Variant::of_long(self.database->records_affected()); }},
      {L"Close",
       [](Self& self, const Arguments&) {
         self.database->close();
         return Variant();
       }},
  };
  return table;
}

}  // namespace test_server

// allow_empty_texts FILE TABLE: lets the text fields of a table hold the empty text, which no statement can say when a
// script creates the table. Used while the demo installation is built; FILE has no password.
#include <cstdio>
#include <span>

#include "database/engine/choice/engine_choice.h"
#include "support/file_system.h"

namespace {

void allow_empty_texts(const char* file, const char* table) {
  const std::string path = support::host_file_system().windows_path(file);
  const auto engine = engine::open_engine("DAO.DBEngine.36");
  const auto database = engine->open_database(path, false, false, "");
  const auto definition = database->table_defs().item(table);
  engine::Fields& fields = definition->fields();
  for (std::int32_t i = 0; i < fields.count(); ++i) {
    if (fields.item(i)->type() == engine::DataType::Text) fields.item(i)->set_allow_zero_length(true);
  }
  database->close();
}

}  // namespace

int main(int count, char** values) {
  const std::span arguments(values, static_cast<std::size_t>(count));
  if (arguments.size() != 3) return 2;
  try {
    allow_empty_texts(arguments[1], arguments[2]);
    return 0;
  } catch (const support::RuntimeError& error) {
    std::fprintf(stderr, "error %d: %s\n", error.number(), error.what());
    return 1;
  }
}

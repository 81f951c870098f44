#include "database/table_procedures.h"

#include "database/ddg.h"
#include "database/lab_definitions.h"
#include "database/schema/table_builder.h"

namespace database {

void create_table(const Environment& environment, engine::Database& database, std::string_view name) {
  const schema::TableRow* row = schema::find_table(name);
  if (!row) return;
  if (row->name == schema::treatment_profile().name) {
    CreateTD_Behandlungsprofil(database);
  } else if (row->name == schema::normal_values().name) {
    CreateTD_Normwerte(database);
  } else {
    schema::create_table(database, *row);
  }
  if (row->name == "labdefs") add_lab_definitions(environment, database);
}

}  // namespace database

#include "wizard/index_database.h"

#include "database/create_database.h"
#include "support/file_system.h"

namespace wizard {

bool provide_index_database(const database::Environment& environment, std::string_view path) {
  if (support::file_test(*environment.files, path)) return true;
  return database::CreateIndexDatabase(environment, path) == 1;
}

}  // namespace wizard

#include "database/jet_import/engine_source.h"
#include "database/open_database.h"

namespace jet_import {

std::unique_ptr<Source> open_source(const database::Environment& environment, std::string_view path,
                                    std::string_view password) {
  auto engine = database::create_engine(environment, false);
  auto database = engine->open_database(path, false, true, database::connect_text(password));
  return engine_source(std::move(engine), std::move(database));
}

}  // namespace jet_import

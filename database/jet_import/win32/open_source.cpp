#include <string>

#include "database/jet_import/engine_source.h"
#include "database/new_file.h"

namespace jet_import {

std::unique_ptr<Source> open_source(const database::Environment& environment, std::string_view path,
                                    std::string_view password) {
  auto engine = database::create_engine(environment, false);
  std::string connect;
  if (!password.empty()) connect = "MS Access;pwd=" + std::string(password);
  auto database = engine->open_database(path, false, true, connect);
  return engine_source(std::move(engine), std::move(database));
}

}  // namespace jet_import

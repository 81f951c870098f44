// A source over the engine's object model: any database that an engine opens.
#pragma once

#include <memory>

#include "database/jet_import/source.h"

namespace jet_import {

std::unique_ptr<Source> engine_source(std::unique_ptr<engine::Engine> engine,
                                      std::unique_ptr<engine::Database> database);

}  // namespace jet_import

// Checks a database file from below: its pages, SQLite's own check, the catalogue and the rules.
#pragma once

#include <cstdint>
#include <functional>

#include "database/engine/embedded/stored_catalogue.h"
#include "database/engine/file_care.h"

namespace engine::embedded {

using FaultsTold = std::function<void(const FileFault&)>;

/// See FileCare::check. Call it in a transaction; `catalogue` is the catalogue as that transaction sees it.
bool check_file(Connection& file, const StoredCatalogue& catalogue, const FaultsTold& tell,
                const std::function<void(std::int64_t done, std::int64_t all)>& look);

/// Compares the tables, fields and indexes of the catalogue with those of the file.
void check_catalogue(Connection& file, const StoredCatalogue& catalogue, const FaultsTold& tell);

/// Finds rows that breach the rules of their fields and tables.
void check_rules(Connection& file, const StoredCatalogue& catalogue, const FaultsTold& tell);

}  // namespace engine::embedded

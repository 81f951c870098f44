// A database file looked at from below: its pages, what SQLite says of them, the catalogue and the rules.
#pragma once

#include <cstdint>
#include <functional>

#include "database/engine/embedded/stored_catalogue.h"
#include "database/engine/file_care.h"

namespace engine::embedded {

using FaultsTold = std::function<void(const FileFault&)>;

/// See FileCare::check. In a transaction, whose state the catalogue is of.
bool check_file(Connection& file, const StoredCatalogue& catalogue, const FaultsTold& tell,
                const std::function<void(std::int64_t done, std::int64_t all)>& look);

/// The catalogue's tables, fields and indexes beside those that the file has.
void check_catalogue(Connection& file, const StoredCatalogue& catalogue, const FaultsTold& tell);

/// Rows that breach the rules of their fields and tables.
void check_rules(Connection& file, const StoredCatalogue& catalogue, const FaultsTold& tell);

}  // namespace engine::embedded

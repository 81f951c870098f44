// The tables of a database that was copied or checked, as the console tool shows them.
#pragma once

#include <ostream>
#include <vector>

#include "database/keeping/table_fingerprint.h"
#include "support/json_writer.h"

namespace patientdb {

/// "43 tables, 120 rows"
void write_sum(std::ostream& out, const std::vector<database::keeping::TableFingerprint>& tables);

/// A list of objects: table, rows, checksum (16 hexadecimal digits).
void write_tables(support::JsonWriter& json, const std::vector<database::keeping::TableFingerprint>& tables);

}  // namespace patientdb

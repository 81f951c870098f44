#include "apps/patientdb/fingerprint_output.h"

#include <fmt/core.h>

#include "database/keeping/same_content.h"

namespace patientdb {

void write_sum(std::ostream& out, const std::vector<database::keeping::TableFingerprint>& tables) {
  out << tables.size() << " tables, " << database::keeping::row_count(tables) << " rows";
}

void write_tables(support::JsonWriter& json, const std::vector<database::keeping::TableFingerprint>& tables) {
  json.begin_array();
  for (const database::keeping::TableFingerprint& table : tables) {
    json.begin_object().key("table").text(table.table).key("rows").integer(table.rows);
    json.key("checksum").text(fmt::format("{:016x}", table.checksum)).end_object();
  }
  json.end_array();
}

}  // namespace patientdb

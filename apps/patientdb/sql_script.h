// SQL statements as the console tool receives them: cuts a script into statements, and tells queries from the others.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace patientdb {

struct ScriptStatement {
  std::string text;
  int line = 1;  ///< the line where it begins, counted from 1
};

/// Cuts at each ";" outside of '…', "…" and […]. A line that begins with "--" is a comment unless it continues a quoted
/// text. Statements that consist of blanks are left out. A clause PARAMETERS stays with its statement.
std::vector<ScriptStatement> split_script(std::string_view script);

/// True for a statement that returns rows: SELECT without INTO, TRANSFORM, a union that begins with TABLE or "(".
bool is_query(std::string_view statement);

}  // namespace patientdb

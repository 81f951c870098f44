// SQL statements as the console tool receives them: a script cut into statements, and what kind each is.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace patientdb {

struct ScriptStatement {
  std::string text;
  int line = 1;  ///< where it begins, counted from 1
};

/// Cuts at each ";" outside of '…', "…" and […]. A line that begins with "--" is a comment unless it continues a quoted
/// text. Statements of blanks only are left out. A clause PARAMETERS stays with its statement.
std::vector<ScriptStatement> split_script(std::string_view script);

/// True for a statement that gives rows: SELECT without INTO, TRANSFORM, a union that begins with TABLE or "(".
bool is_query(std::string_view statement);

}  // namespace patientdb

// Reads the statements that change rows, behind their first word.
#pragma once

#include "database/engine/embedded/jet_sql/ast.h"
#include "database/engine/embedded/jet_sql/query_parser.h"

namespace engine::embedded::jet_sql {

class ChangeParser {
 public:
  ChangeParser(TokenCursor& cursor, QueryParser& queries)
      : cursor_(cursor), queries_(queries), expressions_(queries.expressions()) {}

  InsertStatement parse_insert();
  UpdateStatement parse_update();
  DeleteStatement parse_delete();

 private:
  TokenCursor& cursor_;
  QueryParser& queries_;
  ExpressionParser& expressions_;
};

}  // namespace engine::embedded::jet_sql

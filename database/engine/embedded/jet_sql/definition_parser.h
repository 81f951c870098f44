// Reads the statements that change the layout, from behind their first word, and the PARAMETERS clause.
#pragma once

#include <string>
#include <vector>

#include "database/engine/embedded/jet_sql/ast.h"
#include "database/engine/embedded/jet_sql/expression_parser.h"

namespace engine::embedded::jet_sql {

class DefinitionParser {
 public:
  DefinitionParser(TokenCursor& cursor, ExpressionParser& expressions) : cursor_(cursor), expressions_(expressions) {}

  Statement parse_create();
  Statement parse_alter();
  Statement parse_drop();
  /// The names that are declared.
  std::vector<std::string> parse_parameters();

 private:
  CreateTable parse_create_table();
  CreateIndex parse_create_index(bool unique);
  void parse_index_option(IndexDefinition& index);
  FieldDefinition parse_field(std::vector<IndexDefinition>& indexes);
  FieldDefinition parse_typed_field();
  void parse_field_size(FieldDefinition& field);
  void parse_field_option(FieldDefinition& field, std::vector<IndexDefinition>& indexes);
  void parse_default(FieldDefinition& field);
  bool at_constraint() const noexcept;
  IndexDefinition parse_constraint();

  TokenCursor& cursor_;
  ExpressionParser& expressions_;
};

}  // namespace engine::embedded::jet_sql

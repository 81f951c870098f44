#include "database/engine/embedded/jet_sql/definition_parser.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "database/engine/embedded/jet_sql/field_type.h"
#include "database/engine/engine_error.h"

namespace engine::embedded::jet_sql {

namespace {

struct TypeWord {
  std::string_view word;
  DataType type;
  bool counter = false;
};

constexpr TypeWord type_words[] = {
    {"COUNTER", DataType::Long, true},  {"AUTOINCREMENT", DataType::Long, true},
    {"IDENTITY", DataType::Long, true}, {"BYTE", DataType::Byte},
    {"TINYINT", DataType::Byte},        {"INTEGER1", DataType::Byte},
    {"SHORT", DataType::Integer},       {"SMALLINT", DataType::Integer},
    {"INTEGER2", DataType::Integer},    {"LONG", DataType::Long},
    {"INTEGER", DataType::Long},        {"INT", DataType::Long},
    {"INTEGER4", DataType::Long},       {"SINGLE", DataType::Single},
    {"REAL", DataType::Single},         {"FLOAT4", DataType::Single},
    {"IEEESINGLE", DataType::Single},   {"DOUBLE", DataType::Double},
    {"FLOAT", DataType::Double},        {"FLOAT8", DataType::Double},
    {"IEEEDOUBLE", DataType::Double},   {"NUMBER", DataType::Double},
    {"NUMERIC", DataType::Double},      {"DATETIME", DataType::Date},
    {"DATE", DataType::Date},           {"TIME", DataType::Date},
    {"TIMESTAMP", DataType::Date},      {"YESNO", DataType::Boolean},
    {"BIT", DataType::Boolean},         {"BOOLEAN", DataType::Boolean},
    {"LOGICAL", DataType::Boolean},     {"TEXT", DataType::Text},
    {"VARCHAR", DataType::Text},        {"CHAR", DataType::Text},
    {"STRING", DataType::Text},         {"ALPHANUMERIC", DataType::Text},
    {"MEMO", DataType::Memo},           {"LONGTEXT", DataType::Memo},
    {"LONGCHAR", DataType::Memo},       {"NOTE", DataType::Memo},
};

const TypeWord* find_type(const Token& word) noexcept {
  const auto* const row = std::find_if(std::begin(type_words), std::end(type_words),
                                       [&](const TypeWord& candidate) { return word.is_word(candidate.word); });
  return row == std::end(type_words) ? nullptr : row;
}

/// Types of parameters that no field here can have.
constexpr std::string_view other_parameter_types[] = {"BINARY", "CURRENCY", "DECIMAL", "GUID", "MONEY", "VALUE"};

}  // namespace

/// Reads "PARAMETERS [from] DATETIME, [count] LONG;" before a statement. Nobody gives the parameters values here.
std::vector<std::string> DefinitionParser::parse_parameters() {
  std::vector<std::string> parameters;
  cursor_.set_clause(error_number::parameters_syntax);
  do {
    parameters.push_back(cursor_.expect_name());
    if (cursor_.peek().kind != TokenKind::Word) cursor_.fail_here();
    const Token word = cursor_.take();
    const bool other = std::ranges::any_of(other_parameter_types, [&](auto type) { return word.is_word(type); });
    if (find_type(word) == nullptr && !other) raise(error_number::invalid_data_type, word.text);
    if (!cursor_.accept_symbol("(")) continue;
    if (cursor_.take().kind != TokenKind::Number) cursor_.fail_here();
    cursor_.expect_symbol(")");
  } while (cursor_.accept_symbol(","));
  cursor_.set_clause(error_number::missing_semicolon);
  cursor_.expect_symbol(";");
  cursor_.set_clause(error_number::no_statement);
  return parameters;
}

Statement DefinitionParser::parse_create() {
  if (cursor_.accept_word("TABLE")) return parse_create_table();
  const bool unique = cursor_.accept_word("UNIQUE");
  if (cursor_.accept_word("INDEX")) return parse_create_index(unique);
  cursor_.fail_here();
}

CreateTable DefinitionParser::parse_create_table() {
  cursor_.set_clause(error_number::create_table_syntax);
  CreateTable create;
  create.table.name = cursor_.expect_name();
  cursor_.expect_symbol("(");
  do {
    if (at_constraint()) {
      create.table.indexes.push_back(parse_constraint());
      if (create.table.indexes.back().fields.empty()) cursor_.fail_here();
    } else {
      if (create.table.fields.size() >= most_fields) raise(error_number::too_many_fields);
      create.table.fields.push_back(parse_field(create.table.indexes));
      create.table.fields.back().ordinal_position = static_cast<std::int16_t>(create.table.fields.size() - 1);
    }
    cursor_.set_clause(error_number::create_table_syntax);
  } while (cursor_.accept_symbol(","));
  cursor_.expect_symbol(")");
  return create;
}

FieldDefinition DefinitionParser::parse_field(std::vector<IndexDefinition>& indexes) {
  cursor_.set_clause(error_number::field_definition_syntax);
  FieldDefinition field = parse_typed_field();
  const auto ends = [this] {
    return cursor_.peek().is_symbol(",") || cursor_.peek().is_symbol(")") || cursor_.peek().is_symbol(";") ||
           cursor_.peek().kind == TokenKind::End;
  };
  while (!ends()) parse_field_option(field, indexes);
  return field;
}

FieldDefinition DefinitionParser::parse_typed_field() {
  const std::string name = cursor_.expect_name();
  const Token word = cursor_.take();
  if (word.kind != TokenKind::Word) cursor_.fail_here();
  const TypeWord* const row = find_type(word);
  if (row == nullptr) raise(error_number::invalid_data_type, word.text);
  FieldDefinition field = new_field(name, row->type);
  if (row->counter) field.attributes |= attribute_auto_increment;
  if (row->type == DataType::Text) parse_field_size(field);
  return field;
}

void DefinitionParser::parse_field_size(FieldDefinition& field) {
  if (!cursor_.accept_symbol("(")) return;
  const Token size = cursor_.take();
  if (size.kind != TokenKind::Number || !size.whole) cursor_.fail_here();
  if (size.number < 1 || size.number > longest_text) raise(error_number::field_size, field.name);
  field.size = static_cast<std::int32_t>(size.number);
  cursor_.expect_symbol(")");
}

void DefinitionParser::parse_field_option(FieldDefinition& field, std::vector<IndexDefinition>& indexes) {
  if (cursor_.accept_word("NOT")) {
    cursor_.expect_word("NULL");
    field.required = true;
  } else if (cursor_.accept_word("NULL")) {
    field.required = false;
  } else if (cursor_.accept_word("DEFAULT")) {
    parse_default(field);
  } else if (at_constraint()) {
    IndexDefinition index = parse_constraint();
    if (!index.fields.empty()) raise(error_number::constraint_syntax);
    if (index.name.empty()) index.name = index.primary ? "PrimaryKey" : field.name;
    index.fields.push_back(field.name);
    indexes.push_back(std::move(index));
  } else {
    cursor_.fail_here();
  }
}

/// Takes the expression's text as it is written: at most one literal, name or call, with a sign.
void DefinitionParser::parse_default(FieldDefinition& field) {
  const std::size_t begin = cursor_.peek().begin;
  expressions_.parse_prefix();
  field.default_value = cursor_.text_since(begin);
}

bool DefinitionParser::at_constraint() const noexcept {
  if (cursor_.at_word("CONSTRAINT") && cursor_.at_name(1)) return true;
  if (cursor_.at_word("PRIMARY")) return cursor_.at_word("KEY", 1);
  // "UNIQUE TEXT(5)" is a field with the name UNIQUE.
  if (cursor_.at_word("UNIQUE"))
    return cursor_.peek(1).kind != TokenKind::Word || cursor_.at_word("NOT", 1) || cursor_.at_word("NULL", 1);
  return cursor_.at_word("REFERENCES") || cursor_.at_word("CHECK") ||
         (cursor_.at_word("FOREIGN") && cursor_.at_word("KEY", 1));
}

/// The result has no fields where none are listed: then the field in whose definition the constraint stands is meant.
IndexDefinition DefinitionParser::parse_constraint() {
  cursor_.set_clause(error_number::constraint_syntax);
  IndexDefinition index;
  if (cursor_.accept_word("CONSTRAINT")) index.name = cursor_.expect_name();
  if (cursor_.accept_word("PRIMARY")) {
    cursor_.expect_word("KEY");
    index.primary = true;
    index.required = true;
  } else if (!cursor_.accept_word("UNIQUE")) {
    if (cursor_.at_word("REFERENCES") || cursor_.at_word("FOREIGN")) raise(error_number::not_supported, "foreign keys");
    if (cursor_.at_word("CHECK")) raise(error_number::not_supported, "CHECK constraints");
    cursor_.fail_here();
  }
  index.unique = true;
  if (cursor_.peek().is_symbol("(")) index.fields = cursor_.expect_names();
  if (index.name.empty() && !index.fields.empty()) index.name = index.primary ? "PrimaryKey" : index.fields.front();
  return index;
}

CreateIndex DefinitionParser::parse_create_index(bool unique) {
  cursor_.set_clause(error_number::create_index_syntax);
  CreateIndex create;
  create.index.name = cursor_.expect_name();
  create.index.unique = unique;
  cursor_.expect_word("ON");
  create.table = cursor_.expect_name();
  create.index.fields = cursor_.expect_names();
  if (cursor_.accept_word("WITH")) parse_index_option(create.index);
  return create;
}

void DefinitionParser::parse_index_option(IndexDefinition& index) {
  if (cursor_.accept_word("PRIMARY")) {
    index.primary = true;
    index.unique = true;
    index.required = true;
  } else if (cursor_.accept_word("DISALLOW")) {
    cursor_.expect_word("NULL");
    index.required = true;
  } else if (cursor_.accept_word("IGNORE")) {
    cursor_.expect_word("NULL");
    index.ignore_nulls = true;
  } else {
    cursor_.fail_here();
  }
}

Statement DefinitionParser::parse_alter() {
  cursor_.set_clause(error_number::alter_table_syntax);
  cursor_.expect_word("TABLE");
  const std::string table = cursor_.expect_name();
  std::vector<IndexDefinition> indexes;
  if (cursor_.accept_word("ADD")) {
    if (at_constraint()) {
      IndexDefinition index = parse_constraint();
      if (index.fields.empty()) cursor_.fail_here();
      return CreateIndex{table, std::move(index)};
    }
    if (cursor_.at_word("COLUMN") && cursor_.peek(1).kind != TokenKind::Symbol) cursor_.take();
    AddField add{table, parse_field(indexes)};
    if (!indexes.empty()) raise(error_number::not_supported, "ALTER TABLE ADD COLUMN with a constraint");
    return add;
  }
  if (cursor_.accept_word("ALTER")) {
    cursor_.accept_word("COLUMN");
    AlterField alter{table, parse_field(indexes)};
    if (!indexes.empty()) raise(error_number::not_supported, "ALTER TABLE ALTER COLUMN with a constraint");
    return alter;
  }
  cursor_.expect_word("DROP");
  if (cursor_.accept_word("CONSTRAINT")) return DropIndex{table, cursor_.expect_name()};
  if (cursor_.at_word("COLUMN") && cursor_.at_name(1)) cursor_.take();
  return DropField{table, cursor_.expect_name()};
}

Statement DefinitionParser::parse_drop() {
  cursor_.set_clause(error_number::drop_syntax);
  if (cursor_.accept_word("TABLE")) return DropTable{cursor_.expect_name()};
  cursor_.expect_word("INDEX");
  cursor_.set_clause(error_number::drop_index_syntax);
  DropIndex drop;
  drop.index = cursor_.expect_name();
  cursor_.expect_word("ON");
  drop.table = cursor_.expect_name();
  return drop;
}

}  // namespace engine::embedded::jet_sql

#include <algorithm>
#include <iterator>
#include <utility>

#include "database/engine/embedded/jet_sql/field_type.h"
#include "database/engine/embedded/jet_sql/parser.h"
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

/// "PARAMETERS [from] DATETIME, [count] LONG;" before a statement. Nobody gives them values here.
void Parser::parse_parameters() {
  clause_ = error_number::parameters_syntax;
  do {
    parameters_.push_back(expect_name());
    if (peek().kind != TokenKind::Word) fail_here();
    const Token word = take();
    const bool other = std::ranges::any_of(other_parameter_types, [&](auto type) { return word.is_word(type); });
    if (find_type(word) == nullptr && !other) raise(error_number::invalid_data_type, word.text);
    if (!accept_symbol("(")) continue;
    if (take().kind != TokenKind::Number) fail_here();
    expect_symbol(")");
  } while (accept_symbol(","));
  clause_ = error_number::missing_semicolon;
  expect_symbol(";");
  clause_ = error_number::no_statement;
}

Statement Parser::parse_create() {
  if (accept_word("TABLE")) return parse_create_table();
  const bool unique = accept_word("UNIQUE");
  if (accept_word("INDEX")) return parse_create_index(unique);
  fail_here();
}

CreateTable Parser::parse_create_table() {
  clause_ = error_number::create_table_syntax;
  CreateTable create;
  create.table.name = expect_name();
  expect_symbol("(");
  do {
    if (at_constraint()) {
      create.table.indexes.push_back(parse_constraint());
      if (create.table.indexes.back().fields.empty()) fail_here();
    } else {
      if (create.table.fields.size() >= most_fields) raise(error_number::too_many_fields);
      create.table.fields.push_back(parse_field(create.table.indexes));
      create.table.fields.back().ordinal_position = static_cast<std::int16_t>(create.table.fields.size() - 1);
    }
    clause_ = error_number::create_table_syntax;
  } while (accept_symbol(","));
  expect_symbol(")");
  return create;
}

FieldDefinition Parser::parse_field(std::vector<IndexDefinition>& indexes) {
  clause_ = error_number::field_definition_syntax;
  FieldDefinition field = parse_typed_field();
  const auto ends = [this] {
    return peek().is_symbol(",") || peek().is_symbol(")") || peek().is_symbol(";") || peek().kind == TokenKind::End;
  };
  while (!ends()) parse_field_option(field, indexes);
  return field;
}

FieldDefinition Parser::parse_typed_field() {
  const std::string name = expect_name();
  const Token word = take();
  if (word.kind != TokenKind::Word) fail_here();
  const TypeWord* const row = find_type(word);
  if (row == nullptr) raise(error_number::invalid_data_type, word.text);
  FieldDefinition field = new_field(name, row->type);
  if (row->counter) field.attributes |= attribute_auto_increment;
  if (row->type == DataType::Text) parse_field_size(field);
  return field;
}

void Parser::parse_field_size(FieldDefinition& field) {
  if (!accept_symbol("(")) return;
  const Token size = take();
  if (size.kind != TokenKind::Number || !size.whole) fail_here();
  if (size.number < 1 || size.number > longest_text) raise(error_number::field_size, field.name);
  field.size = static_cast<std::int32_t>(size.number);
  expect_symbol(")");
}

void Parser::parse_field_option(FieldDefinition& field, std::vector<IndexDefinition>& indexes) {
  if (accept_word("NOT")) {
    expect_word("NULL");
    field.required = true;
  } else if (accept_word("NULL")) {
    field.required = false;
  } else if (accept_word("DEFAULT")) {
    parse_default(field);
  } else if (at_constraint()) {
    IndexDefinition index = parse_constraint();
    if (!index.fields.empty()) raise(error_number::constraint_syntax);
    if (index.name.empty()) index.name = index.primary ? "PrimaryKey" : field.name;
    index.fields.push_back(field.name);
    indexes.push_back(std::move(index));
  } else {
    fail_here();
  }
}

/// The expression's text as written; at most one literal, name or call, with a sign.
void Parser::parse_default(FieldDefinition& field) {
  const std::size_t begin = peek().begin;
  parse_prefix();
  field.default_value = statement_.substr(begin, tokens_[position_ - 1].end - begin);
}

bool Parser::at_constraint() const noexcept {
  if (at_word("CONSTRAINT") && at_name(1)) return true;
  if (at_word("PRIMARY")) return at_word("KEY", 1);
  // "UNIQUE TEXT(5)" is a field of that name.
  if (at_word("UNIQUE")) return peek(1).kind != TokenKind::Word || at_word("NOT", 1) || at_word("NULL", 1);
  return at_word("REFERENCES") || at_word("CHECK") || (at_word("FOREIGN") && at_word("KEY", 1));
}

/// Without fields where none are listed: the field that the constraint stands behind is meant.
IndexDefinition Parser::parse_constraint() {
  clause_ = error_number::constraint_syntax;
  IndexDefinition index;
  if (accept_word("CONSTRAINT")) index.name = expect_name();
  if (accept_word("PRIMARY")) {
    expect_word("KEY");
    index.primary = true;
    index.required = true;
  } else if (!accept_word("UNIQUE")) {
    if (at_word("REFERENCES") || at_word("FOREIGN")) raise(error_number::not_supported, "foreign keys");
    if (at_word("CHECK")) raise(error_number::not_supported, "CHECK constraints");
    fail_here();
  }
  index.unique = true;
  if (peek().is_symbol("(")) index.fields = parse_names();
  if (index.name.empty() && !index.fields.empty()) index.name = index.primary ? "PrimaryKey" : index.fields.front();
  return index;
}

/// A list in parentheses; a table's name and an order are taken and left aside.
std::vector<std::string> Parser::parse_names() {
  std::vector<std::string> names;
  expect_symbol("(");
  do {
    if (names.size() >= most_fields) raise(error_number::too_many_fields);
    names.push_back(expect_name());
    if (accept_symbol(".") || accept_symbol("!")) names.back() = expect_any_name();
    if (!accept_word("ASC")) accept_word("DESC");
  } while (accept_symbol(","));
  expect_symbol(")");
  return names;
}

CreateIndex Parser::parse_create_index(bool unique) {
  clause_ = error_number::create_index_syntax;
  CreateIndex create;
  create.index.name = expect_name();
  create.index.unique = unique;
  expect_word("ON");
  create.table = expect_name();
  create.index.fields = parse_names();
  if (accept_word("WITH")) parse_index_option(create.index);
  return create;
}

void Parser::parse_index_option(IndexDefinition& index) {
  if (accept_word("PRIMARY")) {
    index.primary = true;
    index.unique = true;
    index.required = true;
  } else if (accept_word("DISALLOW")) {
    expect_word("NULL");
    index.required = true;
  } else if (accept_word("IGNORE")) {
    expect_word("NULL");
    index.ignore_nulls = true;
  } else {
    fail_here();
  }
}

Statement Parser::parse_alter() {
  clause_ = error_number::alter_table_syntax;
  expect_word("TABLE");
  const std::string table = expect_name();
  std::vector<IndexDefinition> indexes;
  if (accept_word("ADD")) {
    if (at_constraint()) {
      IndexDefinition index = parse_constraint();
      if (index.fields.empty()) fail_here();
      return CreateIndex{table, std::move(index)};
    }
    if (at_word("COLUMN") && peek(1).kind != TokenKind::Symbol) take();
    AddField add{table, parse_field(indexes)};
    if (!indexes.empty()) raise(error_number::not_supported, "ALTER TABLE ADD COLUMN with a constraint");
    return add;
  }
  if (accept_word("ALTER")) {
    accept_word("COLUMN");
    AlterField alter{table, parse_field(indexes)};
    if (!indexes.empty()) raise(error_number::not_supported, "ALTER TABLE ALTER COLUMN with a constraint");
    return alter;
  }
  expect_word("DROP");
  if (accept_word("CONSTRAINT")) return DropIndex{table, expect_name()};
  if (at_word("COLUMN") && at_name(1)) take();
  return DropField{table, expect_name()};
}

Statement Parser::parse_drop() {
  clause_ = error_number::drop_syntax;
  if (accept_word("TABLE")) return DropTable{expect_name()};
  expect_word("INDEX");
  clause_ = error_number::drop_index_syntax;
  DropIndex drop;
  drop.index = expect_name();
  expect_word("ON");
  drop.table = expect_name();
  return drop;
}

}  // namespace engine::embedded::jet_sql

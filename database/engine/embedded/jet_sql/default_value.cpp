#include "database/engine/embedded/jet_sql/binder.h"
#include "database/engine/embedded/jet_sql/change_writer.h"
#include "database/engine/embedded/jet_sql/function_table.h"
#include "database/engine/embedded/jet_sql/jet_sql.h"
#include "database/engine/embedded/jet_sql/parser.h"
#include "support/encoding.h"

namespace engine::embedded::jet_sql {

namespace {

class NoTables final : public Catalogue {
 public:
  const TableDefinition* find_table(std::string_view) const override { return nullptr; }
};

bool is_blank_text(std::string_view text) noexcept {
  return text.find_first_not_of(" \t\r\n") == std::string_view::npos;
}

/// A word that is no function: a text field's own text, Yes or No of a Yes/No field.
void take_word(Expression& expression, const FieldDefinition& field, bool text) {
  const auto* const word = std::get_if<ColumnName>(&expression.node);
  if (word == nullptr || !word->table.empty()) return;
  const std::string content = word->column;
  if (text && find_function(content) == nullptr) {
    expression.node = Literal{content};
  } else if (field.type == DataType::Boolean) {
    for (const std::string_view yes : {"yes", "on"}) {
      if (support::equal_ignoring_case(content, yes)) expression.node = Literal{true};
    }
    for (const std::string_view no : {"no", "off"}) {
      if (support::equal_ignoring_case(content, no)) expression.node = Literal{false};
    }
  }
}

ExpressionPtr parse_default(const FieldDefinition& field, bool text) {
  try {
    return Parser(field.default_value).parse_lone_expression();
  } catch (const support::RuntimeError&) {
    // Layouts give a text field's default without quotes as well.
    if (!text || field.default_value.find('\0') != std::string::npos) throw;
    auto expression = std::make_unique<Expression>();
    expression->node = Literal{field.default_value};
    return expression;
  }
}

bool is_empty_text(const Expression& expression) noexcept {
  const auto* const literal = std::get_if<Literal>(&expression.node);
  const auto* const text = literal != nullptr ? std::get_if<std::string>(&literal->value) : nullptr;
  return text != nullptr && text->empty();
}

}  // namespace

std::string compile_default(const FieldDefinition& field) {
  std::string none = field.type == DataType::Boolean ? "0" : "NULL";
  if (is_blank_text(field.default_value)) return none;
  const bool text = field.holds_text();
  const ExpressionPtr expression = parse_default(field, text);
  if (!text && is_empty_text(*expression)) return none;
  take_word(*expression, field, text);
  const NoTables no_tables;
  Binder binder(no_tables);
  binder.bind_default(*expression);
  const TableDefinition table;
  ChangeWriter change(table);
  change.default_value(*expression, field);
  return change.take();
}

}  // namespace engine::embedded::jet_sql

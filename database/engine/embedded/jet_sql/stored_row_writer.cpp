#include "database/engine/embedded/jet_sql/stored_row_writer.h"

#include <algorithm>
#include <utility>

#include "database/engine/embedded/jet_sql/field_type.h"
#include "database/engine/engine_error.h"
#include "support/encoding.h"

namespace engine::embedded::jet_sql {

namespace {

constexpr double largest_whole_of_single = 16777216;  // 2^24

/// True where the value may not be a value of the field as it stands. convert_text takes care of texts.
bool needs_conversion(const FieldDefinition& field, const ValueType& type) noexcept {
  const ValueType wanted = type_of_field(field);
  switch (wanted.kind) {
    case Kind::Boolean:
      return type.kind != Kind::Boolean;
    case Kind::Byte:
    case Kind::Integer:
    case Kind::Long:
      return !type.is_whole() || type.low < wanted.low || type.high > wanted.high;
    case Kind::Single:
      return type.kind != Kind::Single &&
             (!type.is_whole() || type.low < -largest_whole_of_single || type.high > largest_whole_of_single);
    case Kind::Double:
      return !type.is_number();
    case Kind::Date:
      return type.kind != Kind::Date || !type.in_calendar;
    default:
      return true;
  }
}

bool is_empty_constant(const Expression& expression) noexcept {
  const Literal* const literal = as_literal(expression);
  const auto* const text = literal != nullptr ? std::get_if<std::string>(&literal->value) : nullptr;
  return text != nullptr && text->empty();
}

}  // namespace

/// The origin of a value tells how reliable its type is.
ValueOrigin origin_of(const Expression& expression) noexcept {
  if (as_literal(expression) != nullptr) return ValueOrigin::Constant;
  const auto* const name = std::get_if<ColumnName>(&behind_alias(expression).node);
  const bool field = name != nullptr && name->source != nullptr && name->source->table != nullptr;
  return field ? ValueOrigin::Field : ValueOrigin::Expression;
}

ValueOrigin origin_of(const OutputColumn& column) noexcept {
  if (column.expression != nullptr) return origin_of(*column.expression);
  const bool field = column.source != nullptr && column.source->table != nullptr;
  return field ? ValueOrigin::Field : ValueOrigin::Expression;
}

StoredRowWriter::StoredRowWriter(SqlText& sql, QueryWriter& queries, const TableDefinition& changed)
    : sql_(sql), queries_(queries), table_(changed) {
  for (const FieldDefinition& field : table_.fields) {
    if (std::optional<Rule> rule = compile_rule(field, table_)) rules_.push_back({&field, std::move(*rule)});
  }
  if (std::optional<Rule> rule = compile_rule(table_)) rules_.push_back({nullptr, std::move(*rule)});
}

error_number::Number StoredRowWriter::null_error(const FieldDefinition& field) const noexcept {
  if (field.auto_increment() || field.type == DataType::Boolean) return error_number::none;
  if (field.required) return error_number::field_required;
  const bool in_key = std::any_of(table_.indexes.begin(), table_.indexes.end(), [&](const IndexDefinition& index) {
    return index.forbids_null() && std::any_of(index.fields.begin(), index.fields.end(), [&](const std::string& name) {
             return support::equal_ignoring_case(name, field.name);
           });
  });
  return in_key ? error_number::null_in_key : error_number::none;
}

/// Stores the value of a list or an assignment.
void StoredRowWriter::store(const FieldDefinition& field, const Expression& given) {
  Given known{given.type, origin_of(given)};
  known.empty = is_empty_constant(given);
  checked_for_null(field, StoreMode::Refuse, known,
                   [&] { convert(field, known, StoreMode::Refuse, [&] { queries_.expressions().value(given); }); });
}

void StoredRowWriter::checked_for_null(const FieldDefinition& field, StoreMode mode, const Given& given,
                                       const Writer& write_value) {
  const bool constant = given.origin == ValueOrigin::Constant && given.type.kind != Kind::Null;
  const error_number::Number error = constant || mode != StoreMode::Refuse ? error_number::none : null_error(field);
  if (error != error_number::none) sql_.write("jet_required(");
  write_value();
  if (error == error_number::none) return;
  sql_.write(", ");
  sql_.whole_literal(error);
  sql_.write(", ");
  sql_.text_literal(field.name);
  sql_.write(")");
}

void StoredRowWriter::convert(const FieldDefinition& field, const Given& given, StoreMode mode,
                              const Writer& write_value) {
  // A Yes/No without a value is No.
  const bool boolean = field.type == DataType::Boolean;
  if (given.type.kind == Kind::Null) {
    sql_.write(boolean ? "0" : "NULL");
    return;
  }
  if (field.holds_text()) return convert_text(field, given, mode, write_value);
  if (boolean) sql_.write("ifnull(");
  const bool converted = given.origin == ValueOrigin::Expression || needs_conversion(field, given.type);
  if (converted) sql_.write(std::string(find_field_type(field.type)->store_function) + "(");
  write_value();
  if (converted) sql_.write(")");
  if (boolean) sql_.write(", 0)");
}

void StoredRowWriter::convert_text(const FieldDefinition& field, const Given& given, StoreMode mode,
                                   const Writer& write_value) {
  const ValueType& type = given.type;
  const bool sized = type.kind == Kind::Text && type.size > 0 && type.size <= field.size;
  const bool fits = field.type == DataType::Memo || (sized && given.origin != ValueOrigin::Expression);
  const bool full_constant = given.origin == ValueOrigin::Constant && !given.empty;
  const bool empty_is_refused = mode == StoreMode::Refuse && !field.allow_zero_length && !full_constant;
  if (type.is_text() && fits && !empty_is_refused) return write_value();
  // Only texts are cut: a number without its last digits would be another number.
  const bool cut = mode == StoreMode::Append && type.is_text();
  sql_.write(cut ? "jet_cut_text(" : "jet_store_text(");
  queries_.expressions().as_text(type, write_value);
  sql_.write(", ");
  sql_.whole_literal(field.type == DataType::Memo ? 0 : field.size);
  if (!cut) {
    sql_.write(empty_is_refused ? ", 0, " : ", 1, ");
    sql_.text_literal(field.name);
  }
  sql_.write(")");
}

std::vector<const Rule*> StoredRowWriter::rules(const std::function<bool(const FieldDefinition*)>& wanted) const {
  std::vector<const Rule*> rules;
  for (const FieldRule& each : rules_) {
    if (wanted(each.field)) rules.push_back(&each.rule);
  }
  return rules;
}

void StoredRowWriter::named_stored(const FieldDefinition& field, bool named, const Writer& write_stored) {
  write_stored();
  if (!named) return;
  sql_.write(" AS ");
  sql_.name(field.name);
}

/// Writes one sum, so that the rules are checked in their order.
void StoredRowWriter::raise_breaches(const std::vector<const Rule*>& rules) {
  sql_.list(rules, " + ", [this](const Rule* rule) { sql_.write(rule->raising()); });
}

void StoredRowWriter::leave_out_breaches() {
  if (rules_.empty()) return;
  named_row();
  sql_.list(rules_, " AND ", [this](const FieldRule& each) { sql_.write("ifnull(" + each.rule.condition + ", 1)"); });
}

/// Ends the subselect of the row as it will be stored. Because of the limit SQLite keeps the row by itself and computes
/// its values once.
void StoredRowWriter::named_row() {
  sql_.write(" LIMIT -1) AS ");
  sql_.write(rule_row);
  sql_.write(" WHERE ");
}

}  // namespace engine::embedded::jet_sql

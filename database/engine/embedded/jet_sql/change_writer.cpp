#include "database/engine/embedded/jet_sql/change_writer.h"

#include <algorithm>
#include <set>

#include "database/engine/embedded/jet_sql/field_type.h"
#include "database/engine/embedded/jet_sql/sqlite_text.h"
#include "database/engine/engine_error.h"
#include "support/encoding.h"

namespace engine::embedded::jet_sql {

namespace {

constexpr double largest_whole_of_single = 16777216;  // 2^24

/// True where the value may not be one of the field's as it stands. Texts are convert_text's matter.
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

/// The rows come one by one from the tables, so that what is stored can be written in place of what is selected. Sorted
/// rows do not: SQLite works the columns out, and would number the rows, before it sorts them.
bool is_plain(const QueryTree& query) noexcept {
  const Select& first = *query.selects.front();
  return query.selects.size() == 1 && !first.distinct && !first.top && !first.grouped && query.order_by.empty();
}

/// Where a value comes from tells how far its type is to be trusted.
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

bool is_empty_constant(const Expression& expression) noexcept {
  const Literal* const literal = as_literal(expression);
  const auto* const text = literal != nullptr ? std::get_if<std::string>(&literal->value) : nullptr;
  return text != nullptr && text->empty();
}

}  // namespace

ChangeWriter::ChangeWriter(const TableDefinition& changed) : table_(changed) {
  for (const FieldDefinition& field : table_.fields) {
    if (std::optional<Rule> rule = compile_rule(field, table_)) rules_.push_back({&field, std::move(*rule)});
  }
  if (std::optional<Rule> rule = compile_rule(table_)) rules_.push_back({nullptr, std::move(*rule)});
}

void ChangeWriter::insert(const InsertStatement& statement) {
  std::vector<Destination> fields = destinations(statement);
  add_defaults(fields);
  head(fields, statement.query != nullptr);
  if (statement.query != nullptr) {
    append(*statement.query, fields);
  } else {
    values(statement, fields);
  }
}

/// Without a list: every field for VALUES, the names of the columns for a query.
std::vector<std::string> ChangeWriter::field_names(const InsertStatement& statement) const {
  if (!statement.fields.empty()) return statement.fields;
  std::vector<std::string> names;
  if (statement.query != nullptr) {
    for (const OutputColumn& output : statement.query->outputs) names.push_back(output.name);
  } else {
    for (const FieldDefinition& field : table_.fields) names.push_back(field.name);
  }
  return names;
}

std::vector<ChangeWriter::Destination> ChangeWriter::destinations(const InsertStatement& statement) const {
  const std::vector<std::string> names = field_names(statement);
  const std::size_t count = statement.query != nullptr ? statement.query->outputs.size() : statement.values.size();
  if (names.size() != count) raise(error_number::value_count);
  std::vector<Destination> fields;
  std::set<const FieldDefinition*> seen;
  for (std::size_t position = 0; position < names.size(); ++position) {
    const FieldDefinition* const field = table_.find_field(names[position]);
    if (field == nullptr) raise(error_number::insert_unknown_field, names[position]);
    if (!seen.insert(field).second) raise(error_number::duplicate_destination, field->name);
    fields.push_back({field, position, {}, false});
  }
  return fields;
}

void ChangeWriter::add_defaults(std::vector<Destination>& fields) const {
  std::set<const FieldDefinition*> named;
  for (const Destination& destination : fields) named.insert(destination.field);
  for (const FieldDefinition& field : table_.fields) {
    if (named.contains(&field)) continue;
    std::string text = field.auto_increment() ? std::string() : compile_default(field);
    // A rule may speak of fields that the statement does not name.
    if (text != "NULL" || null_error(field) != error_number::none || !rules_.empty())
      fields.push_back({&field, 0, std::move(text), true});
  }
}

void ChangeWriter::head(const std::vector<Destination>& fields, bool append) {
  const bool unique = std::ranges::any_of(table_.indexes, &IndexDefinition::forbids_duplicates);
  // Rows that a unique index refuses are passed over in an append.
  sql_.write(append && unique ? "INSERT OR IGNORE INTO " : "INSERT INTO ");
  sql_.name(table_.name);
  sql_.write(" (");
  if (!table_.row_id_column().empty()) sql_.write(std::string(table_.row_id_column()) + ", ");
  sql_.list(fields, ", ", [&](const Destination& destination) { sql_.name(destination.field->name); });
  sql_.write(") ");
}

/// Where no name for it is left, SQLite chooses the row's identity.
void ChangeWriter::row_identity() {
  if (table_.row_id_column().empty()) return;
  // A name with a "." is no field's.
  sql_.write(rules_.empty() ? "jet_next_row(), " : "jet_next_row() AS \"jet.row\", ");
}

/// What a field gets that the statement does not name. Rows of an append are filtered; of a list, Null is refused.
void ChangeWriter::default_of(const Destination& destination, bool append) {
  const FieldDefinition& field = *destination.field;
  if (field.auto_increment()) {
    sql_.write("jet_next_number()");
    return;
  }
  const Given given{ValueType{}, ValueOrigin::Expression};
  checked_for_null(field, append ? StoreMode::Append : StoreMode::Refuse, given,
                   [&] { sql_.write(destination.default_text); });
}

/// The value; in an AutoNumber the next number where it is Null.
template <typename Write>
void ChangeWriter::number_or_value(const FieldDefinition& field, Write write_value) {
  if (!field.auto_increment()) return write_value();
  sql_.write("coalesce(jet_given_number(");
  write_value();
  sql_.write("), jet_next_number())");
}

void ChangeWriter::values(const InsertStatement& statement, const std::vector<Destination>& fields) {
  const auto write_stored = [&](const Destination& destination) {
    if (destination.is_default) return default_of(destination, false);
    const Expression& given = *statement.values[destination.position];
    number_or_value(*destination.field, [&] { store(*destination.field, given); });
  };
  sql_.write(rules_.empty() ? "VALUES (" : "SELECT * FROM (SELECT ");
  row_identity();
  sql_.list(fields, ", ", [&](const Destination& destination) {
    named_stored(*destination.field, !rules_.empty(), [&] { write_stored(destination); });
  });
  if (rules_.empty()) {
    sql_.write(")");
    return;
  }
  named_row();
  std::vector<const Rule*> all;
  for (const FieldRule& each : rules_) all.push_back(&each.rule);
  raise_breaches(all);
}

template <typename Write>
void ChangeWriter::append_columns(const QueryTree& query, const std::vector<Destination>& fields, Write write_column) {
  const auto write_stored = [&](const Destination& destination) {
    if (destination.is_default) return default_of(destination, true);
    const OutputColumn& column = query.outputs[destination.position];
    number_or_value(*destination.field, [&] {
      convert(*destination.field, {column.type, origin_of(column)}, StoreMode::Append, [&] { write_column(column); });
    });
  };
  sql_.write(rules_.empty() ? "SELECT " : "SELECT * FROM (SELECT ");
  row_identity();
  sql_.list(fields, ", ", [&](const Destination& destination) {
    named_stored(*destination.field, !rules_.empty(), [&] { write_stored(destination); });
  });
}

/// Conditions that leave out rows with Null in a required field or an empty text where none is allowed.
template <typename Write>
void ChangeWriter::append_filters(const QueryTree& query, const std::vector<Destination>& fields,
                                  std::string_view before, Write write_column) {
  const auto open = [&] { sql_.write(std::exchange(before, " AND ")); };
  for (const Destination& destination : fields) {
    const bool required = null_error(*destination.field) != error_number::none;
    if (required) {
      open();
      sql_.write("(");
      destination.is_default ? static_cast<void>(sql_.write(destination.default_text))
                             : write_column(query.outputs[destination.position]);
      sql_.write(" IS NOT NULL)");
    }
    if (destination.is_default || !destination.field->holds_text() || destination.field->allow_zero_length) continue;
    const OutputColumn& column = query.outputs[destination.position];
    if (!column.type.is_text() && column.type.kind != Kind::Variant) continue;
    open();
    sql_.write("ifnull(");
    write_column(column);
    sql_.write(" <> '' COLLATE BINARY, 1)");
  }
}

void ChangeWriter::append(const QueryTree& query, const std::vector<Destination>& fields) {
  if (is_plain(query)) {
    append_plain(query, fields);
    return leave_out_breaches();
  }
  const auto write_column = [this](const OutputColumn& column) {
    sql_.write("q.");
    sql_.name(column.name);
  };
  // All rows are there, in their order, before the first one is numbered.
  sql_.write("WITH q AS MATERIALIZED (");
  const Select& first = *query.selects.front();
  const bool sorted_top = query.selects.size() == 1 && first.top && !query.order_by.empty();
  sorted_top ? queries_.ranked(first, query, nullptr) : queries_.query(query);
  sql_.write(") ");
  append_columns(query, fields, write_column);
  sql_.write(" FROM q");
  append_filters(query, fields, " WHERE ", write_column);
  leave_out_breaches();
}

void ChangeWriter::append_plain(const QueryTree& query, const std::vector<Destination>& fields) {
  const Select& select = *query.selects.front();
  const auto write_column = [this](const OutputColumn& column) { queries_.output(column); };
  append_columns(query, fields, write_column);
  if (!select.from.empty()) {
    sql_.write(" FROM ");
    queries_.from(select.from);
  }
  if (select.where != nullptr) {
    sql_.write(" WHERE ");
    queries_.conditions().condition(*select.where);
  }
  append_filters(query, fields, select.where != nullptr ? " AND " : " WHERE ", write_column);
}

void ChangeWriter::default_value(const Expression& expression, const FieldDefinition& field) {
  convert(field, {expression.type, origin_of(expression)}, StoreMode::Default,
          [&] { queries_.expressions().value(expression); });
}

error_number::Number ChangeWriter::null_error(const FieldDefinition& field) const noexcept {
  if (field.auto_increment() || field.type == DataType::Boolean) return error_number::none;
  if (field.required) return error_number::field_required;
  const bool in_key = std::any_of(table_.indexes.begin(), table_.indexes.end(), [&](const IndexDefinition& index) {
    return index.forbids_null() && std::any_of(index.fields.begin(), index.fields.end(), [&](const std::string& name) {
             return support::equal_ignoring_case(name, field.name);
           });
  });
  return in_key ? error_number::null_in_key : error_number::none;
}

/// The value of a list or an assignment.
void ChangeWriter::store(const FieldDefinition& field, const Expression& given) {
  Given known{given.type, origin_of(given)};
  known.empty = is_empty_constant(given);
  checked_for_null(field, StoreMode::Refuse, known,
                   [&] { convert(field, known, StoreMode::Refuse, [&] { queries_.expressions().value(given); }); });
}

void ChangeWriter::checked_for_null(const FieldDefinition& field, StoreMode mode, const Given& given,
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

void ChangeWriter::convert(const FieldDefinition& field, const Given& given, StoreMode mode,
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

void ChangeWriter::convert_text(const FieldDefinition& field, const Given& given, StoreMode mode,
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

}  // namespace engine::embedded::jet_sql

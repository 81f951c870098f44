#include "database/engine/embedded/jet_sql/change_generator.h"

#include <algorithm>
#include <set>

#include "database/engine/embedded/field_type.h"
#include "database/engine/embedded/jet_sql/error_numbers.h"
#include "database/engine/embedded/sqlite_text.h"
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

/// The rows come one by one from the tables, so that what is stored can be written in place of what is selected.
bool is_plain(const QueryTree& query) noexcept {
  const Select& first = *query.selects.front();
  return query.selects.size() == 1 && !first.distinct && !first.top && !first.grouped;
}

}  // namespace

ChangeGenerator::ChangeGenerator(const TableDefinition& changed) : table_(changed) {
  for (const FieldDefinition& field : table_.fields) {
    if (std::optional<Rule> rule = compile_rule(field, table_)) rules_.push_back({&field, std::move(*rule)});
  }
  if (std::optional<Rule> rule = compile_rule(table_)) rules_.push_back({nullptr, std::move(*rule)});
}

void ChangeGenerator::insert(const InsertStatement& statement) {
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
std::vector<std::string> ChangeGenerator::field_names(const InsertStatement& statement) const {
  if (!statement.fields.empty()) return statement.fields;
  std::vector<std::string> names;
  if (statement.query != nullptr) {
    for (const OutputColumn& output : statement.query->outputs) names.push_back(output.name);
  } else {
    for (const FieldDefinition& field : table_.fields) names.push_back(field.name);
  }
  return names;
}

std::vector<ChangeGenerator::Destination> ChangeGenerator::destinations(const InsertStatement& statement) const {
  const std::vector<std::string> names = field_names(statement);
  const std::size_t count = statement.query != nullptr ? statement.query->outputs.size() : statement.values.size();
  if (names.size() != count) raise(error_value_count);
  std::vector<Destination> fields;
  std::set<const FieldDefinition*> seen;
  for (std::size_t position = 0; position < names.size(); ++position) {
    const FieldDefinition* const field = table_.find_field(names[position]);
    if (field == nullptr) raise(error_insert_unknown_field, names[position]);
    if (!seen.insert(field).second) raise(error_duplicate_destination, field->name);
    fields.push_back({field, position, {}, false});
  }
  return fields;
}

void ChangeGenerator::add_defaults(std::vector<Destination>& fields) const {
  std::set<const FieldDefinition*> named;
  for (const Destination& destination : fields) named.insert(destination.field);
  for (const FieldDefinition& field : table_.fields) {
    if (named.contains(&field)) continue;
    std::string text = field.auto_increment() ? std::string() : compile_default(field);
    // A rule may speak of fields that the statement does not name.
    if (text != "NULL" || null_error(field) != 0 || !rules_.empty())
      fields.push_back({&field, 0, std::move(text), true});
  }
}

/// Over the rows of an append the highest number is looked up once and counted on.
void ChangeGenerator::next_number(const FieldDefinition& field, const QueryTree* query) {
  const std::string highest = "max(" + quoted_name(field.name) + ")";
  const std::string from_table = " FROM " + quoted_name(table_.name) + ")";
  if (query == nullptr) {
    write("?1");
    takes_number_ = true;
  } else if (is_plain(*query) && !query->order_by.empty()) {
    // SQLite works the columns out before it sorts the rows.
    write("jet_store_long((SELECT coalesce(" + highest + ", 0)" + from_table + " + row_number() OVER (");
    order_by(*query, false);
    write("))");
  } else {
    write("jet_next_number((SELECT jet_start_numbers(" + highest + ")" + from_table + ")");
  }
}

void ChangeGenerator::head(const std::vector<Destination>& fields, bool append) {
  const bool unique = std::ranges::any_of(table_.indexes, &IndexDefinition::forbids_duplicates);
  // Rows that a unique index refuses are passed over in an append.
  write(append && unique ? "INSERT OR IGNORE INTO " : "INSERT INTO ");
  name(table_.name);
  write(" (");
  list(fields, ", ", [&](const Destination& destination) { name(destination.field->name); });
  write(") ");
}

/// What a field gets that the statement does not name.
void ChangeGenerator::default_of(const Destination& destination, const QueryTree* query) {
  const FieldDefinition& field = *destination.field;
  if (field.auto_increment()) return next_number(field, query);
  // Rows of an append are filtered; of a list, Null is left to refuse.
  const bool refused = query == nullptr && destination.default_text == "NULL";
  if (refused) return store(field, ValueType{}, StoreMode::Refuse, [] {});
  write(destination.default_text);
}

/// The value; in an AutoNumber the next number where it is Null.
template <typename Write>
void ChangeGenerator::number_or_value(const Destination& destination, bool nullable, const QueryTree* query,
                                      Write write_value) {
  const bool numbered = nullable && destination.field->auto_increment();
  if (numbered) write("coalesce(");
  write_value();
  if (!numbered) return;
  write(", ");
  next_number(*destination.field, query);
  write(")");
}

void ChangeGenerator::values(const InsertStatement& statement, const std::vector<Destination>& fields) {
  const auto write_stored = [&](const Destination& destination) {
    if (destination.is_default) return default_of(destination, nullptr);
    const Expression& given = *statement.values[destination.position];
    number_or_value(destination, given.type.nullable, nullptr,
                    [&] { store(*destination.field, given.type, StoreMode::Refuse, [&] { value(given); }); });
  };
  write(rules_.empty() ? "VALUES (" : "SELECT * FROM (SELECT ");
  list(fields, ", ", [&](const Destination& destination) {
    named_stored(*destination.field, !rules_.empty(), [&] { write_stored(destination); });
  });
  if (rules_.empty()) {
    write(")");
    return;
  }
  named_row();
  std::vector<const Rule*> all;
  for (const FieldRule& each : rules_) all.push_back(&each.rule);
  raise_breaches(all);
}

template <typename Write>
void ChangeGenerator::append_columns(const QueryTree& query, const std::vector<Destination>& fields,
                                     Write write_column) {
  const auto write_stored = [&](const Destination& destination) {
    if (destination.is_default) return default_of(destination, &query);
    const OutputColumn& column = query.outputs[destination.position];
    number_or_value(destination, column.type.nullable, &query, [&] {
      convert(*destination.field, column.type, StoreMode::Append, [&] { write_column(column); });
    });
  };
  list(fields, ", ", [&](const Destination& destination) {
    named_stored(*destination.field, !rules_.empty(), [&] { write_stored(destination); });
  });
}

/// Conditions that leave out rows with Null in a required field or an empty text where none is allowed.
template <typename Write>
void ChangeGenerator::append_filters(const QueryTree& query, const std::vector<Destination>& fields,
                                     std::string_view before, Write write_column) {
  const auto open = [&] { write(std::exchange(before, " AND ")); };
  for (const Destination& destination : fields) {
    const bool required = null_error(*destination.field) != 0;
    if (destination.is_default) {
      if (!required || destination.default_text != "NULL") continue;
      open();
      write("0");
      continue;
    }
    const OutputColumn& column = query.outputs[destination.position];
    if (required && column.type.nullable) {
      open();
      write("(");
      write_column(column);
      write(" IS NOT NULL)");
    }
    const bool text = column.type.is_text() || column.type.kind == Kind::Variant;
    if (text && column.type.may_be_empty && destination.field->holds_text() && !destination.field->allow_zero_length) {
      open();
      write("ifnull(");
      write_column(column);
      write(" <> '' COLLATE BINARY, 1)");
    }
  }
}

void ChangeGenerator::append(const QueryTree& query, const std::vector<Destination>& fields) {
  write(rules_.empty() ? "SELECT " : "SELECT * FROM (SELECT ");
  if (is_plain(query)) {
    const Select& select = *query.selects.front();
    const auto write_column = [this](const OutputColumn& column) { output(column); };
    append_columns(query, fields, write_column);
    if (!select.from.empty()) {
      write(" FROM ");
      from(select.from);
    }
    if (select.where != nullptr) {
      write(" WHERE ");
      condition(*select.where);
    }
    append_filters(query, fields, select.where != nullptr ? " AND " : " WHERE ", write_column);
    order_by(query, false);
    return leave_out_breaches();
  }
  const auto write_column = [this](const OutputColumn& column) {
    write("q.");
    name(column.name);
  };
  append_columns(query, fields, write_column);
  write(" FROM (");
  // SQLite would number the rows before it sorts them and takes the top ones.
  const Select& first = *query.selects.front();
  const bool sorted_top = query.selects.size() == 1 && first.top && !query.order_by.empty();
  sorted_top ? ranked(first, query, nullptr) : Generator::query(query);
  write(") AS q");
  append_filters(query, fields, " WHERE ", write_column);
  leave_out_breaches();
}

void ChangeGenerator::default_value(const Expression& expression, const FieldDefinition& field) {
  convert(field, expression.type, StoreMode::Default, [&] { value(expression); });
}

int ChangeGenerator::null_error(const FieldDefinition& field) const noexcept {
  if (field.auto_increment()) return 0;
  if (field.required) return error_field_required;
  const bool in_key = std::any_of(table_.indexes.begin(), table_.indexes.end(), [&](const IndexDefinition& index) {
    return index.forbids_null() && std::any_of(index.fields.begin(), index.fields.end(), [&](const std::string& name) {
             return support::equal_ignoring_case(name, field.name);
           });
  });
  return in_key ? error_null_in_key : 0;
}

void ChangeGenerator::store(const FieldDefinition& field, const ValueType& type, StoreMode mode,
                            const Writer& write_value) {
  const int error = type.nullable ? null_error(field) : 0;
  if (error != 0) write("jet_required(");
  if (type.kind == Kind::Null) {
    write("NULL");
  } else {
    convert(field, type, mode, write_value);
  }
  if (error == 0) return;
  write(", ");
  whole_literal(error);
  write(", ");
  text_literal(field.name);
  write(")");
}

void ChangeGenerator::convert(const FieldDefinition& field, const ValueType& type, StoreMode mode,
                              const Writer& write_value) {
  if (type.kind == Kind::Null) {
    write("NULL");
  } else if (field.holds_text()) {
    convert_text(field, type, mode, write_value);
  } else if (needs_conversion(field, type)) {
    write(find_field_type(field.type)->store_function);
    write("(");
    write_value();
    write(")");
  } else {
    write_value();
  }
}

void ChangeGenerator::convert_text(const FieldDefinition& field, const ValueType& type, StoreMode mode,
                                   const Writer& write_value) {
  const bool fits =
      field.type == DataType::Memo || (type.kind == Kind::Text && type.size > 0 && type.size <= field.size);
  const bool empty_is_refused = mode == StoreMode::Refuse && !field.allow_zero_length && type.may_be_empty;
  if (type.is_text() && fits && !empty_is_refused) return write_value();
  // Only texts are cut: a number without its last digits would be another number.
  const bool cut = mode == StoreMode::Append && type.is_text();
  write(cut ? "jet_cut_text(" : "jet_store_text(");
  as_text(type, write_value);
  write(", ");
  whole_literal(field.type == DataType::Memo ? 0 : field.size);
  if (!cut) {
    write(empty_is_refused ? ", 0, " : ", 1, ");
    text_literal(field.name);
  }
  write(")");
}

}  // namespace engine::embedded::jet_sql

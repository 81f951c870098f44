#include "database/engine/embedded/jet_sql/insert_writer.h"

#include <algorithm>
#include <set>
#include <utility>

#include "database/engine/embedded/jet_sql/field_type.h"
#include "database/engine/embedded/jet_sql/sql_text.h"
#include "database/engine/engine_error.h"
#include "support/encoding.h"

namespace engine::embedded::jet_sql {

namespace {

/// True where the rows come from the tables one by one, so that what is stored can be written in place of what is
/// selected. Sorted rows do not: SQLite computes the columns before it sorts, and would number the rows in the wrong
/// order.
bool is_plain(const QueryTree& query) noexcept {
  const Select& first = *query.selects.front();
  return query.selects.size() == 1 && !first.distinct && !first.top && !first.grouped && query.order_by.empty();
}

}  // namespace

void InsertWriter::insert(const InsertStatement& statement) {
  std::vector<Destination> fields = destinations(statement);
  add_defaults(fields);
  head(fields, statement.query != nullptr);
  if (statement.query != nullptr) {
    append(*statement.query, fields);
  } else {
    values(statement, fields);
  }
}

/// Without a list of fields: every field for VALUES, the names of the columns for a query.
std::vector<std::string> InsertWriter::field_names(const InsertStatement& statement) const {
  if (!statement.fields.empty()) return statement.fields;
  std::vector<std::string> names;
  if (statement.query != nullptr) {
    for (const OutputColumn& output : statement.query->outputs) names.push_back(output.name);
  } else {
    for (const FieldDefinition& field : table_.fields) names.push_back(field.name);
  }
  return names;
}

std::vector<InsertWriter::Destination> InsertWriter::destinations(const InsertStatement& statement) const {
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

void InsertWriter::add_defaults(std::vector<Destination>& fields) const {
  std::set<const FieldDefinition*> named;
  for (const Destination& destination : fields) named.insert(destination.field);
  for (const FieldDefinition& field : table_.fields) {
    if (named.contains(&field)) continue;
    std::string text = field.auto_increment() ? std::string() : compile_default(field);
    // A rule may name fields that the statement does not name.
    if (text != "NULL" || stored_.null_error(field) != error_number::none || stored_.has_rules())
      fields.push_back({&field, 0, std::move(text), true});
  }
}

void InsertWriter::head(const std::vector<Destination>& fields, bool append) {
  const bool unique = std::ranges::any_of(table_.indexes, &IndexDefinition::forbids_duplicates);
  // An append passes over the rows that a unique index refuses.
  sql_.write(append && unique ? "INSERT OR IGNORE INTO " : "INSERT INTO ");
  sql_.name(table_.name);
  sql_.write(" (");
  if (!table_.row_id_column().empty()) sql_.write(std::string(table_.row_id_column()) + ", ");
  sql_.list(fields, ", ", [&](const Destination& destination) { sql_.name(destination.field->name); });
  sql_.write(") ");
}

/// Where fields hide every name of the row's identity, SQLite chooses it.
void InsertWriter::row_identity() {
  if (table_.row_id_column().empty()) return;
  // No field has a name with ".".
  sql_.write(!stored_.has_rules() ? "jet_next_row(), " : "jet_next_row() AS \"jet.row\", ");
}

/// Writes the value of a field that the statement does not name. An append leaves out the rows with Null; VALUES refuse
/// it.
void InsertWriter::default_of(const Destination& destination, bool append) {
  const FieldDefinition& field = *destination.field;
  if (field.auto_increment()) {
    sql_.write("jet_next_number()");
    return;
  }
  const StoredRowWriter::Given given{ValueType{}, ValueOrigin::Expression};
  stored_.checked_for_null(field, append ? StoreMode::Append : StoreMode::Refuse, given,
                           [&] { sql_.write(destination.default_text); });
}

/// Writes the value; in an AutoNumber the next number where the value is Null.
template <typename Write>
void InsertWriter::number_or_value(const FieldDefinition& field, Write write_value) {
  if (!field.auto_increment()) return write_value();
  sql_.write("coalesce(jet_given_number(");
  write_value();
  sql_.write("), jet_next_number())");
}

void InsertWriter::values(const InsertStatement& statement, const std::vector<Destination>& fields) {
  const auto write_stored = [&](const Destination& destination) {
    if (destination.is_default) return default_of(destination, false);
    const Expression& given = *statement.values[destination.position];
    number_or_value(*destination.field, [&] { stored_.store(*destination.field, given); });
  };
  sql_.write(!stored_.has_rules() ? "VALUES (" : "SELECT * FROM (SELECT ");
  row_identity();
  sql_.list(fields, ", ", [&](const Destination& destination) {
    stored_.named_stored(*destination.field, stored_.has_rules(), [&] { write_stored(destination); });
  });
  if (!stored_.has_rules()) {
    sql_.write(")");
    return;
  }
  stored_.named_row();
  stored_.raise_breaches(stored_.rules([](const FieldDefinition*) { return true; }));
}

template <typename Write>
void InsertWriter::append_columns(const QueryTree& query, const std::vector<Destination>& fields, Write write_column) {
  const auto write_stored = [&](const Destination& destination) {
    if (destination.is_default) return default_of(destination, true);
    const OutputColumn& column = query.outputs[destination.position];
    number_or_value(*destination.field, [&] {
      stored_.convert(*destination.field, {column.type, origin_of(column)}, StoreMode::Append,
                      [&] { write_column(column); });
    });
  };
  sql_.write(!stored_.has_rules() ? "SELECT " : "SELECT * FROM (SELECT ");
  row_identity();
  sql_.list(fields, ", ", [&](const Destination& destination) {
    stored_.named_stored(*destination.field, stored_.has_rules(), [&] { write_stored(destination); });
  });
}

/// Writes conditions that leave out rows with Null in a required field, or with an empty text where none is allowed.
template <typename Write>
void InsertWriter::append_filters(const QueryTree& query, const std::vector<Destination>& fields,
                                  std::string_view before, Write write_column) {
  const auto open = [&] { sql_.write(std::exchange(before, " AND ")); };
  for (const Destination& destination : fields) {
    const bool required = stored_.null_error(*destination.field) != error_number::none;
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

void InsertWriter::append(const QueryTree& query, const std::vector<Destination>& fields) {
  if (is_plain(query)) {
    append_plain(query, fields);
    return stored_.leave_out_breaches();
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
  stored_.leave_out_breaches();
}

void InsertWriter::append_plain(const QueryTree& query, const std::vector<Destination>& fields) {
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

}  // namespace engine::embedded::jet_sql

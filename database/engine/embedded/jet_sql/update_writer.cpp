#include "database/engine/embedded/jet_sql/update_writer.h"

#include <algorithm>
#include <set>

#include "database/engine/engine_error.h"
#include "support/encoding.h"

namespace engine::embedded::jet_sql {

namespace {

/// True where the new value has a subselect, which must see the table's rows as they were before the statement.
bool reads_other_rows(const Assignment& assignment) { return has_subselect(*assignment.value); }

}  // namespace

void UpdateWriter::update(const UpdateStatement& statement, const Source& target) {
  sql_.write(may_violate_index(statement) ? "UPDATE OR IGNORE " : "UPDATE ");
  queries_.table(target);
  sql_.write(" SET ");
  assignments(statement);
  for (const TableReferencePtr& reference : statement.rows.from) joined_tables(*reference, target);
  if (!others_.empty()) {
    sql_.write(" FROM ");
    sql_.list(others_, ", ", [this](const TableReference* other) { queries_.reference(*other); });
  } else if (std::ranges::any_of(statement.assignments, reads_other_rows)) {
    // With a FROM clause, SQLite computes all new values before it stores the first one.
    sql_.write(" FROM (SELECT 1)");
  }
  joined_where(statement);
}

void UpdateWriter::assignments(const UpdateStatement& statement) {
  std::set<const FieldDefinition*> seen;
  std::vector<const Rule*> rules = rules_of(statement);
  sql_.list(statement.assignments, ", ", [&](const Assignment& assignment) {
    const SourceColumn& column = assignment.target.source->columns[assignment.target.index];
    if (column.field->auto_increment()) raise(error_number::field_not_updatable, column.name);
    if (!seen.insert(column.field).second) raise(error_number::duplicate_destination, column.name);
    sql_.name(column.name);
    sql_.write(" = ");
    if (rules.empty()) return assigned(assignment);
    checked_row(statement, rules);
    rules.clear();
  });
}

void UpdateWriter::assigned(const Assignment& assignment) {
  stored_.store(*assignment.target.source->columns[assignment.target.index].field, *assignment.value);
}

/// The rules of the fields that change, and the table's rule.
std::vector<const Rule*> UpdateWriter::rules_of(const UpdateStatement& statement) const {
  return stored_.rules([&](const FieldDefinition* field) {
    return field == nullptr || std::ranges::any_of(statement.assignments, [&](const Assignment& assignment) {
             return assignment.target.source->columns[assignment.target.index].field == field;
           });
  });
}

/// Writes the value of the first assignment. It is read from the complete new row after the row was checked against the
/// rules.
void UpdateWriter::checked_row(const UpdateStatement& statement, const std::vector<const Rule*>& rules) {
  const Source& source = *statement.assignments.front().target.source;
  sql_.write("(SELECT ");
  sql_.name(source.columns[statement.assignments.front().target.index].name);
  sql_.write(" FROM (SELECT ");
  sql_.list(source.columns, ", ", [&](const SourceColumn& column) {
    stored_.named_stored(*column.field, true, [&] {
      const auto assignment = std::ranges::find_if(statement.assignments, [&](const Assignment& each) {
        return &each.target.source->columns[each.target.index] == &column;
      });
      if (assignment != statement.assignments.end()) return assigned(*assignment);
      queries_.expressions().column(source, static_cast<std::size_t>(&column - source.columns.data()));
    });
  });
  stored_.named_row();
  stored_.raise_breaches(rules);
  sql_.write(")");
}

/// Splits an inner join into its tables: SQLite's UPDATE … FROM knows no other join.
void UpdateWriter::joined_tables(const TableReference& reference, const Source& target) {
  if (const auto* join = std::get_if<Join>(&reference.node)) {
    if (join->kind != JoinKind::Inner) raise(error_number::not_supported, "UPDATE over an outer join");
    joined_tables(*join->left, target);
    joined_tables(*join->right, target);
    conditions_.push_back(join->condition.get());
    return;
  }
  const auto* const named = std::get_if<NamedTable>(&reference.node);
  if (named == nullptr || named->source != &target) others_.push_back(&reference);
}

void UpdateWriter::joined_where(const UpdateStatement& statement) {
  if (statement.rows.where != nullptr) conditions_.push_back(statement.rows.where.get());
  if (conditions_.empty()) return;
  sql_.write(" WHERE ");
  sql_.list(conditions_, " AND ", [this](const Expression* part) { queries_.conditions().condition(*part); });
}

bool UpdateWriter::may_violate_index(const UpdateStatement& statement) const {
  const auto assigned = [&](const std::string& field) {
    return std::any_of(statement.assignments.begin(), statement.assignments.end(), [&](const Assignment& assignment) {
      return support::equal_ignoring_case(assignment.target.source->columns[assignment.target.index].name, field);
    });
  };
  return std::any_of(table_.indexes.begin(), table_.indexes.end(), [&](const IndexDefinition& index) {
    return index.forbids_duplicates() && std::any_of(index.fields.begin(), index.fields.end(), assigned);
  });
}

void UpdateWriter::remove(const DeleteStatement& statement, const Source& target) {
  sql_.write("DELETE FROM ");
  const Select& rows = statement.rows;
  if (rows.sources.size() == 1) {
    queries_.table(target);
    if (rows.where == nullptr) return;
    sql_.write(" WHERE ");
    queries_.conditions().condition(*rows.where);
    return;
  }
  sql_.name(target.table->name);
  sql_.write(" WHERE ");
  sql_.write(target.table->row_id_column());
  sql_.write(" IN (SELECT ");
  queries_.row_id(target);
  sql_.write(" FROM ");
  queries_.from(rows.from);
  if (rows.where != nullptr) {
    sql_.write(" WHERE ");
    queries_.conditions().condition(*rows.where);
  }
  sql_.write(")");
}

}  // namespace engine::embedded::jet_sql

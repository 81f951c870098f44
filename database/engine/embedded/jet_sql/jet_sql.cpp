#include "database/engine/embedded/jet_sql/jet_sql.h"

#include <algorithm>
#include <utility>

#include "database/engine/embedded/jet_sql/binder.h"
#include "database/engine/embedded/jet_sql/change_writer.h"
#include "database/engine/embedded/jet_sql/parser.h"
#include "database/engine/embedded/jet_sql/query_writer.h"
#include "database/engine/engine_error.h"
#include "support/encoding.h"

namespace engine::embedded::jet_sql {

namespace {

bool same_name(std::string_view left, std::string_view right) { return support::equal_ignoring_case(left, right); }

/// The source whose rows the query shows one by one; null where there is none.
const Source* base_of(const QueryTree& query) noexcept {
  const Select& select = *query.selects.front();
  const bool plain = query.selects.size() == 1 && !select.distinct && !select.grouped && select.sources.size() == 1;
  if (!plain) return nullptr;
  const Source& source = select.sources.front();
  return source.table != nullptr && !source.table->row_id_column().empty() ? &source : nullptr;
}

/// Carries a statement of the dialect from its tree to the program.
class Compiler {
 public:
  Compiler(std::string_view text, const Catalogue& catalogue, const std::vector<std::string>& parameters)
      : text_(text), catalogue_(catalogue), binder_(catalogue) {
    binder_.declare(parameters);
  }

  void set_headings(std::vector<std::optional<std::string>> headings) {
    binder_.set_headings(std::move(headings));
    headings_known_ = true;
  }

  Program operator()(SelectStatement& statement) {
    if (!statement.into.empty()) return select_into(statement);
    binder_.bind(statement);
    const Select& first = *statement.query->selects.front();
    const bool lacks_headings = first.pivot != nullptr && first.pivot->headings.empty();
    if (lacks_headings && !headings_known_) return cross_table(first);
    return query(*statement.query);
  }

  Query query(const QueryTree& tree) {
    const Source* const base = base_of(tree);
    Query query;
    for (const OutputColumn& output : tree.outputs) {
      ResultColumn column{output.name, data_type_of(output.type), field_size_of(output.type), {}};
      if (base != nullptr && output.source == base) column.base_field = base->columns[output.index].name;
      query.columns.push_back(std::move(column));
    }
    if (base != nullptr) query.base_table = base->table->name;
    SqlText sql;
    QueryWriter(sql).query(tree, base);
    query.sqlite_sql = sql.take();
    const auto is_worked_out = [](const ResultColumn& column) { return column.base_field.empty(); };
    if (base != nullptr && std::ranges::any_of(query.columns, is_worked_out)) {
      SqlText row;
      QueryWriter(row).one_row(tree, *base);
      query.row_sql = row.take();
    }
    return query;
  }

  Program operator()(InsertStatement& statement) {
    const TableDefinition& table = binder_.table(statement.table);
    binder_.bind(statement);
    ChangeWriter change(table);
    change.insert(statement);
    return Change{change.take(), table.name, true};
  }

  Program operator()(UpdateStatement& statement) {
    binder_.bind(statement);
    const Source* const target = statement.assignments.front().target.source;
    const bool one_table = std::all_of(statement.assignments.begin(), statement.assignments.end(),
                                       [&](const Assignment& each) { return each.target.source == target; });
    if (!one_table) raise(error_number::not_supported, "UPDATE of several tables");
    if (target->table == nullptr) raise(error_number::field_not_updatable, statement.assignments.front().target.column);
    ChangeWriter change(*target->table);
    change.update(statement, *target);
    return Change{change.take(), target->table->name};
  }

  Program operator()(DeleteStatement& statement) {
    binder_.bind(statement);
    const Source& target = source_to_delete(statement);
    if (target.table->row_id_column().empty()) raise(error_number::not_supported, "rows without an identity");
    ChangeWriter change(*target.table);
    change.remove(statement, target);
    return Change{change.take(), target.table->name};
  }

  Program operator()(CreateTable& create) {
    if (catalogue_.find_table(create.table.name) != nullptr) raise(error_number::table_exists, create.table.name);
    const TableDefinition& table = create.table;
    for (const FieldDefinition& field : table.fields) {
      const auto same = [&](const FieldDefinition& other) { return same_name(other.name, field.name); };
      if (std::count_if(table.fields.begin(), table.fields.end(), same) > 1)
        raise(error_number::field_defined_twice, field.name);
    }
    const auto primary = [](const IndexDefinition& index) { return index.primary; };
    if (std::count_if(table.indexes.begin(), table.indexes.end(), primary) > 1) raise(error_number::primary_key_exists);
    for (const IndexDefinition& index : table.indexes) {
      check_fields(table, index);
      const auto same = [&](const IndexDefinition& other) { return same_name(other.name, index.name); };
      if (std::count_if(table.indexes.begin(), table.indexes.end(), same) > 1)
        raise(error_number::index_exists, index.name);
    }
    return std::move(create);
  }

  Program operator()(AddField& add) {
    if (layout_of(add.table).find_field(add.field.name) != nullptr) raise(error_number::field_exists, add.field.name);
    return std::move(add);
  }

  Program operator()(AlterField& alter) {
    if (layout_of(alter.table).find_field(alter.field.name) == nullptr)
      raise(error_number::no_such_field, alter.field.name);
    return std::move(alter);
  }

  Program operator()(DropField& drop) {
    if (layout_of(drop.table).find_field(drop.field) == nullptr) raise(error_number::no_such_field, drop.field);
    return std::move(drop);
  }

  Program operator()(DropTable& drop) {
    layout_of(drop.table);
    return std::move(drop);
  }

  Program operator()(CreateIndex& create) {
    const TableDefinition& table = layout_of(create.table);
    if (find_named(table.indexes, create.index.name) != nullptr) raise(error_number::index_exists, create.index.name);
    const auto primary = [](const IndexDefinition& index) { return index.primary; };
    if (create.index.primary && std::any_of(table.indexes.begin(), table.indexes.end(), primary)) {
      raise(error_number::primary_key_exists);
    }
    check_fields(table, create.index);
    return std::move(create);
  }

  Program operator()(DropIndex& drop) {
    if (find_named(layout_of(drop.table).indexes, drop.index) == nullptr)
      raise(error_number::no_such_index, drop.index);
    return std::move(drop);
  }

 private:
  static Program cross_table(const Select& select) {
    SqlText sql;
    QueryWriter(sql).headings(select);
    return CrossTable{{sql.take(), {{"heading", DataType::Text, longest_text, {}}}, {}}};
  }

  Program select_into(SelectStatement& statement) {
    if (catalogue_.find_table(statement.into) != nullptr) raise(error_number::table_exists, statement.into);
    SelectInto program;
    program.target = statement.into;
    program.external_file = statement.external_file;
    const TextRange& into = statement.into_clause;
    const TextRange& in = statement.in_clause;
    program.select_text = text_.substr(0, into.begin);
    program.select_text += text_.substr(into.end, in.end > 0 ? in.begin - into.end : std::string_view::npos);
    if (in.end > 0) program.select_text += text_.substr(in.end);
    // The tables of another file are known to it alone.
    if (statement.external_file.empty()) binder_.bind(statement);
    return program;
  }

  const Source& source_to_delete(const DeleteStatement& statement) const {
    const Source* target = nullptr;
    for (const Source& source : statement.rows.sources) {
      if (statement.table.empty() || same_name(source.name, statement.table)) {
        if (target != nullptr) raise(error_number::no_table_to_delete_from);
        target = &source;
      }
    }
    if (target != nullptr && target->table != nullptr) return *target;
    if (target == nullptr) raise(error_number::unknown_table, statement.table);
    raise(error_number::no_table_to_delete_from);
  }

  const TableDefinition& layout_of(std::string_view name) const {
    const TableDefinition* const table = catalogue_.find_table(name);
    if (table == nullptr) raise(error_number::no_such_table, name);
    return *table;
  }

  static void check_fields(const TableDefinition& table, const IndexDefinition& index) {
    for (auto field = index.fields.begin(); field != index.fields.end(); ++field) {
      if (table.find_field(*field) == nullptr) raise(error_number::index_field, *field);
      const auto same = [&](const std::string& other) { return same_name(other, *field); };
      if (std::any_of(index.fields.begin(), field, same)) raise(error_number::field_defined_twice, *field);
    }
  }

  std::string_view text_;
  const Catalogue& catalogue_;
  Binder binder_;
  bool headings_known_ = false;
};

}  // namespace

Program compile(std::string_view statement, const Catalogue& catalogue) {
  Parser parser(statement);
  Statement tree = parser.parse_statement();
  return std::visit(Compiler(statement, catalogue, parser.parameters()), tree);
}

Query compile_cross_table(std::string_view statement, const Catalogue& catalogue,
                          std::vector<std::optional<std::string>> headings) {
  Parser parser(statement);
  Statement tree = parser.parse_statement();
  Compiler compiler(statement, catalogue, parser.parameters());
  compiler.set_headings(std::move(headings));
  return std::get<Query>(std::visit(compiler, tree));
}

}  // namespace engine::embedded::jet_sql

#include "database/engine/embedded/jet_sql/jet_sql.h"

#include <sqlite3.h>

#include <algorithm>
#include <charconv>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "database/engine/embedded/jet_sql/binder.h"
#include "database/engine/embedded/jet_sql/change_writer.h"
#include "database/engine/embedded/jet_sql/function_call.h"
#include "database/engine/embedded/jet_sql/function_table.h"
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

/// Compiles a statement of the dialect from its tree to the program.
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
    // Only the other file knows its tables.
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

namespace {

class NoTables final : public Catalogue {
 public:
  const TableDefinition* find_table(std::string_view) const override { return nullptr; }
};

bool is_blank_text(std::string_view text) noexcept {
  return text.find_first_not_of(" \t\r\n") == std::string_view::npos;
}

/// Takes a word that is no function: in a text field for the text itself, in a Yes/No field for Yes or No.
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
    // Layouts also give a text field's default without quotes.
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

namespace {

struct ResultRow {
  int result;
  error_number::Number number;
  std::string_view detail = {};
};

// SQLite's own messages may quote the statement, and with it stored values. Therefore none of them is passed on.
constexpr ResultRow result_codes[] = {
    {SQLITE_BUSY, error_number::file_in_use},
    {SQLITE_LOCKED, error_number::table_in_use},
    {SQLITE_NOMEM, error_number::out_of_memory},
    {SQLITE_READONLY, error_number::read_only},
    {SQLITE_INTERRUPT, error_number::cancelled},
    {SQLITE_IOERR, error_number::disk_error},
    {SQLITE_FULL, error_number::disk_error, "the disk is full"},
    {SQLITE_CORRUPT, error_number::unknown_format, "the file is damaged"},
    {SQLITE_NOTADB, error_number::unknown_format},
    {SQLITE_CANTOPEN, error_number::file_not_opened},
    {SQLITE_PERM, error_number::file_not_opened},
    {SQLITE_AUTH, error_number::file_not_opened},
    {SQLITE_TOOBIG, error_number::out_of_string_space},
    {SQLITE_MISMATCH, error_number::conversion},
};

/// The error that report_current_exception() wrote; nothing where the message is SQLite's own.
std::optional<support::RuntimeError> own_error(std::string_view message) {
  if (!message.starts_with(own_error_mark)) return std::nullopt;
  message.remove_prefix(own_error_mark.size());
  int number = 0;
  const auto parsed = std::from_chars(message.data(), message.data() + message.size(), number);
  const auto used = static_cast<std::size_t>(parsed.ptr - message.data());
  if (parsed.ec != std::errc{} || used >= message.size() || message[used] != ':') return std::nullopt;
  return support::RuntimeError(number, std::string(message.substr(used + 1)));
}

}  // namespace

support::RuntimeError error_of(sqlite3* connection, int result) {
  const int code = result & 0xFF;
  const char* const message = sqlite3_errmsg(connection);
  if (code == SQLITE_ERROR && message != nullptr) {
    if (const auto own = own_error(message)) return *own;
  }
  if (code == SQLITE_CONSTRAINT) {
    const bool null = sqlite3_extended_errcode(connection) == SQLITE_CONSTRAINT_NOTNULL;
    return engine_error(null ? error_number::field_required : error_number::duplicate_value);
  }
  const auto* const row = std::ranges::find(result_codes, code, &ResultRow::result);
  return row != std::end(result_codes) ? engine_error(row->number, row->detail)
                                       : engine_error(error_number::internal_error);
}

}  // namespace engine::embedded::jet_sql

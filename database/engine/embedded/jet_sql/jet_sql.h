// The Jet SQL front end. It compiles a statement of the dialect to one SQLite statement, or to a description of a
// layout change that the engine carries out itself. It reads tokens, builds a syntax tree, looks names up in the
// catalogue and writes text.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "database/engine/embedded/jet_sql/catalogue.h"

struct sqlite3;

namespace engine::embedded::jet_sql {

/// A column of a result.
struct ResultColumn {
  std::string name;
  DataType type = DataType::Text;
  std::int32_t size = 0;
  /// The field of the query's one base table that the column shows unchanged; else empty.
  std::string base_field;
};

/// SELECT and UNION.
struct Query {
  std::string sqlite_sql;
  std::vector<ResultColumn> columns;
  /// The one table whose rows the query shows row by row, so that a recordset over the query can be updated; else
  /// empty. The SQLite statement then has one more column at the end: the row's rowid.
  std::string base_table;
  /// For such a query with computed columns: a statement that gives the columns of one row; its parameter is the rowid.
  std::string row_sql = {};
};

/// TRANSFORM … PIVOT without a list of headings. The headings are read from the rows; then compile_cross_table() makes
/// the query.
struct CrossTable {
  Query headings;
};

/// INSERT, UPDATE and DELETE: one SQLite statement with its conversions and checks. sqlite3_changes tells the number of
/// rows.
struct Change {
  std::string sqlite_sql;
  std::string table;
  /// True for an INSERT: its rows get their AutoNumbers and identities from the connection's Numbering.
  bool adds_rows = false;
};

/// The AutoNumber and the row identity that a table gave last. A statement that adds rows counts on from there.
struct Numbering {
  std::int64_t number = 0;
  std::int64_t row = 0;
};

/// SELECT … INTO target FROM … [IN 'file'].
struct SelectInto {
  std::string target;
  /// The statement without its INTO and IN clauses. Compiled against the catalogue of the database that holds the
  /// sources, it gives the columns of the new table: names, types and sizes only.
  std::string select_text;
  /// The other database file; empty for the current one.
  std::string external_file;
};

struct CreateTable {
  TableDefinition table;
};
struct AddField {
  std::string table;
  FieldDefinition field;
};
struct AlterField {
  std::string table;
  FieldDefinition field;
};
struct DropField {
  std::string table;
  std::string field;
};
struct DropTable {
  std::string table;
};
struct CreateIndex {
  std::string table;
  IndexDefinition index;
};
struct DropIndex {
  std::string table;
  std::string index;
};

using Program = std::variant<Query, CrossTable, Change, SelectInto, CreateTable, AddField, AlterField, DropField,
                             DropTable, CreateIndex, DropIndex>;

/// Compiles one statement. Raises the engine's number: 3075/3131/3134/3141/3144/3290/3293 syntax, 3078 unknown table,
/// 3061 unknown column, 3127 INSERT INTO with an unknown field, 3464 type mismatch in criterion, 3085 unknown function,
/// 3142 text after the end of the statement, 3129 no statement of the dialect, 3360 too complex. Any text may be given:
/// time, memory and stack are bounded.
Program compile(std::string_view statement, const Catalogue& catalogue);

/// The query of a crosstab, with a column for each heading; Null becomes "<>". Raises what compile() raises, 3190 for
/// more than 255 columns, 3063 where a heading is empty or the name of a column before it.
Query compile_cross_table(std::string_view statement, const Catalogue& catalogue,
                          std::vector<std::optional<std::string>> headings);

/// The SQLite text of a field's default expression (`0`, `-1`, `"0"`, `True`, `""`, Now()), converted to the field's
/// type. Without a default it is "NULL", and No for a Yes/No. A text field's default may lack its quotes. Raises what
/// compile() raises.
std::string compile_default(const FieldDefinition& field);

/// The error that a failed sqlite3_step stands for. Functions of the dialect report theirs as "jet:NUMBER:description".
/// Other results of SQLite map to the engine's numbers (constraint unique 3022, busy 3045, full 3043, corrupt 3343, …),
/// to 51 where none fits. No text ever holds a value.
support::RuntimeError error_of(sqlite3* connection, int result);

}  // namespace engine::embedded::jet_sql

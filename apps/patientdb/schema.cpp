#include "apps/patientdb/command.h"
#include "apps/patientdb/database_operand.h"
#include "apps/patientdb/value_output.h"
#include "database/layout_json.h"

namespace patientdb {
namespace {

constexpr std::string_view schema_usage = "FILE [TABLE] [--json]";

constexpr console::Option schema_options[] = {json_option, password_file_option, console::help_option};

std::string yes_or_no(bool value) { return value ? "yes" : "no"; }

void write_fields(std::ostream& out, engine::Fields& fields) {
  using Align = console::TextTable::Align;
  console::TextTable table;
  table.add_column("Field");
  table.add_column("Type");
  table.add_column("Size", Align::Right);
  table.add_column("Attributes", Align::Right);
  table.add_column("Default");
  table.add_column("Required");
  table.add_column("Empty");
  table.add_column("Ordinal", Align::Right);
  for (std::int32_t i = 0; i < fields.count(); ++i) {
    const auto field = fields.item(i);
    table.add_row({field->name(), std::string(database::type_word(field->type())), std::to_string(field->size()),
                   std::to_string(field->attributes()), field->default_value(), yes_or_no(field->required()),
                   yes_or_no(field->allow_zero_length()), std::to_string(field->ordinal_position())});
  }
  table.write(out);
}

void write_indexes(std::ostream& out, engine::Indexes& indexes) {
  for (std::int32_t i = 0; i < indexes.count(); ++i) {
    const auto index = indexes.item(i);
    out << "Index " << console::one_line(index->name()) << " (";
    for (std::int32_t j = 0; j < index->fields().count(); ++j) {
      out << (j > 0 ? ", " : "") << console::one_line(index->fields().item(j)->name());
    }
    // A primary index is always required, so that is not said again.
    out << ')' << (index->primary() ? " primary" : "") << (index->unique() ? " unique" : "")
        << (index->required() && !index->primary() ? " required" : "") << (index->ignore_nulls() ? " ignores Null" : "")
        << '\n';
  }
}

void write_text(std::ostream& out, engine::TableDef& table) {
  out << console::one_line(table.name()) << "\n\n";
  write_fields(out, table.fields());
  write_indexes(out, table.indexes());
  out << '\n';
}

int run_schema(const console::Arguments& arguments, console::Console& console) {
  arguments.expect_operands(1, 2, schema_usage);
  const OpenDatabase open = open_database(arguments, console, Access::ReadOnly);
  const std::string only = arguments.operands().size() > 1 ? arguments.operands()[1] : "";
  engine::TableDefs& tables = open.database->table_defs();
  if (arguments.has(json_option.name)) {
    console.out << database::layout_json(*open.database, only) << '\n';
  } else if (!only.empty()) {
    write_text(console.out, *tables.item(only));
  } else {
    for (std::int32_t i = 0; i < tables.count(); ++i) write_text(console.out, *tables.item(i));
  }
  return console::exit_done;
}

}  // namespace

const Command schema_command{"schema", schema_usage,   "Shows the tables with their fields and indexes.",
                             "",       schema_options, run_schema};

}  // namespace patientdb

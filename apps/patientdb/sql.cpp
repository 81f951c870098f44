#include <fmt/core.h>

#include <algorithm>

#include "apps/console/arguments.h"
#include "apps/console/progress_line.h"
#include "apps/patientdb/command.h"
#include "apps/patientdb/database_operand.h"
#include "apps/patientdb/sql_script.h"
#include "apps/patientdb/value_output.h"
#include "support/encoding.h"

namespace patientdb {
namespace {

constexpr std::string_view sql_usage = "FILE STATEMENT… [--json] | FILE --script SCRIPT [--json]";

constexpr std::string_view sql_details =
    R"(Each STATEMENT takes effect as it is run; the first that fails ends the command. A SCRIPT is a UTF-8 file of
statements that end with ";", with comments on lines that begin with "--". It is one transaction: where a
statement fails, the error names its line and the database stays as it was.

With --json each statement gives one line: {"columns":[…],"rows":[[…]],"affected":N}. Null is null, a date
"YYYY-MM-DD HH:MM:SS", Yes/No -1 or 0.)";

constexpr console::Option script_option{"--script", "SCRIPT", "Run the statements of this file, all or none of them."};
constexpr console::Option sql_options[] = {script_option, json_option, password_file_option, console::help_option};

constexpr std::uint64_t script_limit = 256ULL * 1024 * 1024;

class Runner {
 public:
  Runner(engine::Database& database, std::ostream& out, bool json) : database_(database), out_(out), json_(json) {}

  void run(const std::string& statement) {
    if (!is_query(statement)) {
      database_.execute(statement);
      report_change();
      return;
    }
    const auto rows = database_.open_forward_only(statement);
    json_ ? write_json_rows(*rows) : write_table(*rows);
  }

 private:
  void report_change() {
    const std::int32_t affected = database_.records_affected();
    if (json_) {
      support::JsonWriter json(out_);
      json.begin_object().key("columns").begin_array().end_array().key("rows").begin_array().end_array();
      json.key("affected").integer(affected).end_object();
      out_ << '\n';
    } else {
      out_ << affected << (affected == 1 ? " row affected\n" : " rows affected\n");
    }
  }

  void write_json_rows(engine::Recordset& rows) {
    support::JsonWriter json(out_);
    const std::int32_t columns = rows.field_count();
    json.begin_object().key("columns").begin_array();
    for (std::int32_t i = 0; i < columns; ++i) json.text(rows.field_name(i));
    json.end_array().key("rows").begin_array();
    for (; !rows.eof(); rows.move_next()) {
      json.begin_array();
      for (std::int32_t i = 0; i < columns; ++i) write_json(json, rows.value(i));
      json.end_array();
    }
    json.end_array().key("affected").integer(0).end_object();
    out_ << '\n';
  }

  void write_table(engine::Recordset& rows) {
    console::TextTable table;
    const std::int32_t columns = rows.field_count();
    for (std::int32_t i = 0; i < columns; ++i) table.add_column(rows.field_name(i), alignment(rows.field_type(i)));
    std::size_t count = 0;
    for (; !rows.eof(); rows.move_next(), ++count) {
      std::vector<std::string> cells;
      cells.reserve(static_cast<std::size_t>(columns));
      for (std::int32_t i = 0; i < columns; ++i) cells.push_back(cell(rows.value(i)));
      table.add_row(std::move(cells));
    }
    table.write(out_);
    out_ << count << (count == 1 ? " row\n" : " rows\n");
  }

  engine::Database& database_;
  std::ostream& out_;
  bool json_;
};

std::vector<ScriptStatement> read_script(const std::string& host_path) {
  const std::string content = console::read_input_file("The script", host_path, script_limit, "256 MiB");
  const std::string_view text = support::without_byte_order_mark(content);
  if (!support::is_utf8(text)) throw console::InputError("The script " + host_path + " is not UTF-8.");
  return split_script(text);
}

void run_script(engine::Database& database, Runner& runner, const std::vector<ScriptStatement>& statements,
                console::Console& console, const std::string& script) {
  const console::Interrupt interrupt;
  console::ProgressLine progress(console, &interrupt);
  progress.start("statements", static_cast<std::int32_t>(statements.size()));
  engine::Transaction transaction(database);
  for (std::size_t i = 0; i < statements.size(); ++i) {
    database::end_if_interrupted(&progress);
    progress.set_value(static_cast<std::int32_t>(i));
    try {
      runner.run(statements[i].text);
    } catch (const support::RuntimeError& error) {
      throw support::RuntimeError(error.number(), fmt::format("{} ({}, line {}; nothing was changed)", error.what(),
                                                              script, statements[i].line));
    }
  }
  transaction.commit();
}

int run_sql(const console::Arguments& arguments, console::Console& console) {
  const std::optional<std::string> script = arguments.value(script_option.name);
  arguments.expect_operands(script ? 1 : 2, script ? 1 : SIZE_MAX, sql_usage);
  std::vector<ScriptStatement> statements;
  if (script) {
    statements = read_script(*script);
  } else {
    for (std::size_t i = 1; i < arguments.operands().size(); ++i) statements.push_back({arguments.operands()[i], 1});
  }
  const bool only_queries = std::ranges::all_of(statements, is_query, &ScriptStatement::text);
  const OpenDatabase open = open_database(arguments, console, only_queries ? Access::ReadOnly : Access::ReadWrite);
  Runner runner(*open.database, console.out, arguments.has(json_option.name));
  if (script) {
    run_script(*open.database, runner, statements, console, *script);
  } else {
    for (const ScriptStatement& statement : statements) runner.run(statement.text);
  }
  return console::exit_done;
}

}  // namespace

const Command sql_command{"sql", sql_usage, "Runs SQL statements.", sql_details, sql_options, run_sql};

}  // namespace patientdb

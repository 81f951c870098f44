#include "database/keeping/compact.h"

#include "apps/console/progress_line.h"
#include "apps/patientdb/command.h"
#include "apps/patientdb/database_operand.h"
#include "apps/patientdb/tool_environment.h"
#include "support/json_writer.h"

namespace patientdb {
namespace {

constexpr std::string_view compact_usage = "FILE [--json]";

constexpr std::string_view compact_details =
    R"(Writes FILE anew beside the old one, without the gaps that deleted rows have left, reads every table back, and puts the new
file in the old one's place: interrupted at any moment, the old file is there or the new one. Nobody else may have it open.

AutoNumbers count on from the highest number that is there, as after the engine's own compacting: numbers of rows that were
deleted at the end are given again. Needs as much free space as the file has. A file of the Jet engine is compacted by that
engine's own programs.)";

constexpr console::Option compact_options[] = {json_option, password_file_option, console::help_option};

int run_compact(const console::Arguments& arguments, console::Console& console) {
  arguments.expect_operands(1, 1, compact_usage);
  const std::string& file = arguments.operands().front();
  ToolEnvironment environment(arguments, console);
  const console::Interrupt interrupt;
  console::ProgressLine progress(console, &interrupt);
  environment.get().progress = &progress;
  const auto done =
      database::keeping::compact_file(environment.get(), database_path(file), password(arguments, console));
  progress.clear();
  if (arguments.has(json_option.name)) {
    support::JsonWriter json(console.out);
    json.begin_object().key("file").text(file);
    json.key("bytes_before").integer(static_cast<std::int64_t>(done.bytes_before));
    json.key("bytes_after").integer(static_cast<std::int64_t>(done.bytes_after));
    json.key("rows").integer(done.rows).end_object();
    console.out << '\n';
  } else {
    console.out << file << ": " << done.bytes_before << " bytes before, " << done.bytes_after << " after; " << done.rows
                << " rows as they were\n";
  }
  return console::exit_done;
}

}  // namespace

const Command compact_command{"compact",       compact_usage,   "Makes a file as small as what it holds.",
                              compact_details, compact_options, run_compact};

}  // namespace patientdb

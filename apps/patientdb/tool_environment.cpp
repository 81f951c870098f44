#include "apps/patientdb/tool_environment.h"

#include <ostream>

#include "apps/patientdb/database_operand.h"
#include "apps/patientdb/engine_option.h"
#include "support/file_system.h"

namespace patientdb {

ToolEnvironment::ToolEnvironment(const console::Arguments& arguments, const console::Console& console) {
  if (!console.program_folder.empty()) {
    texts_ = support::open_text_table(support::host_file_system().windows_path(console.program_folder), "");
  }
  environment_.password = password(arguments, console);
  environment_.language = texts_.get();
  environment_.open_engine = engine_of(arguments);
  environment_.rows_left = [&err = console.err](const database::RowsLeft& rows) { err << sentence(rows) << '\n'; };
}

SkippedStepLines::SkippedStepLines(std::ostream& err)
    : watch_([this, &err](std::string_view label, const support::RuntimeError& error) {
        ++count_;
        err << label << ": error " << error.number() << ": " << error.what() << '\n';
      }) {}

}  // namespace patientdb

#include <optional>

#include "apps/console/progress_line.h"
#include "apps/patientdb/command.h"
#include "apps/patientdb/database_operand.h"
#include "apps/patientdb/tool_environment.h"
#include "database/open_database.h"
#include "database/upgrade/file_upgrade.h"
#include "database/upgrade/ladder.h"
#include "support/encoding.h"
#include "support/json_writer.h"

namespace patientdb {
namespace {

constexpr std::string_view upgrade_usage = "FILE… [--yes|--no] [--backup|--no-backup] [--json]";

constexpr std::string_view upgrade_details =
    R"(A database of an older layout is brought up to the current one, or stays as it was where that fails. First a copy is
made beside it, checked, and named with the old layout (NAME.4.40.das); a copy that is there is never overwritten. An
upgrade that fails leaves its copy only where the disk or the network has failed.

Ten days of pump data or more are converted only after a question, which is asked on the terminal unless --yes or
--no answers it. A database whose conversion was declined is not asked for it again.

Ctrl+C leaves the file that is being upgraded as it was, and begins no further one.

Exit code 1 where one of the files could not be brought to the current layout.)";

constexpr console::Option upgrade_options[] = {
    yes_option,
    no_option,
    {"--backup", "", "Make a copy first; the default."},
    {"--no-backup", "", "Make no copy."},
    json_option,
    password_file_option,
    console::help_option,
};

/// What has become of one file.
struct Outcome {
  std::string file;
  std::string_view state;  ///< "upgraded", "current", "newer", "foreign", "failed"
  std::string layout;      ///< before the upgrade
  std::string copy;        ///< the copy's name; empty if there is none
  std::optional<support::RuntimeError> error;
  std::vector<std::string> notes;  ///< what the upgrade left behind
  bool good() const { return state == "upgraded" || state == "current"; }
};

/// The layout that every upgrade ends with.
std::string current_layout() { return database::layout_text({}); }

class Upgrader {
 public:
  Upgrader(const console::Arguments& arguments, console::Console& console)
      : environment_(arguments, console),
        word_(password(arguments, console)),
        progress_(console, &interrupt_),
        question_(arguments, console, [this] { progress_.clear(); }),
        makes_copies_(!arguments.has("--no-backup")) {
    environment_.get().progress = &progress_;
    environment_.get().message_box = question_.message_box();
  }

  /// True after Ctrl+C: no further file is begun.
  bool interrupted() const { return progress_.interrupted(); }

  Outcome upgrade(const std::string& file) {
    Outcome outcome{file, "failed", {}, {}, {}, {}};
    environment_.get().rows_left = [&outcome](const database::RowsLeft& rows) {
      outcome.notes.push_back(sentence(rows));
    };
    try {
      upgrade(database_path(file), outcome);
    } catch (const database::UpgradeFailure& failure) {
      outcome.error = failure;
      outcome.copy = failure.copy();
    } catch (const support::RuntimeError& error) {
      outcome.error = error;
    }
    environment_.get().rows_left = {};
    progress_.clear();
    return outcome;
  }

 private:
  void upgrade(const std::string& path, Outcome& outcome) {
    const auto engine = database::create_engine(environment_.get(), false);
    const auto database = engine->open_database(path, true, false, database::connect_text(word_));
    database->open_recordset("SELECT * FROM db_info")->move_first();
    database::VersionRecord record;
    bool ours = false;
    const support::Outcome reading =
        support::outcome_of([&] { ours = database::db_ReadDBInfo(environment_.get(), *database, record); });
    if (!ours && reading.last()) throw support::RuntimeError(*reading.last());
    outcome.layout = database::layout_text(record);
    outcome.state = !ours                             ? "foreign"
                    : database::needs_upgrade(record) ? "failed"
                    : is_current(record)              ? "current"
                                                      : "newer";
    if (!ours || !database::needs_upgrade(record)) return;
    outcome.copy = database::upgrade_opened(environment_.get(), *database, path, record, makes_copies_).copy;
    outcome.state = "upgraded";
  }

  static bool is_current(const database::VersionRecord& record) {
    return record.MajVersion == database::current_major_version && record.MinVersion == database::current_minor_version;
  }

  ToolEnvironment environment_;
  std::string word_;
  console::Interrupt interrupt_;
  console::ProgressLine progress_;
  PumpQuestion question_;
  bool makes_copies_;
};

void write_text(console::Console& console, const Outcome& outcome) {
  for (const std::string& note : outcome.notes) console.err << outcome.file << ": " << note << '\n';
  if (outcome.error) {
    console.err << outcome.file << ": error " << outcome.error->number() << ": " << outcome.error->what();
    console.err << (outcome.copy.empty() ? "" : " (as it was before: " + outcome.copy + ")") << '\n';
  } else if (outcome.state == "upgraded") {
    console.out << outcome.file << ": upgraded from " << outcome.layout << " to " << current_layout();
    console.out << (outcome.copy.empty() ? "" : ", copy in " + outcome.copy) << '\n';
  } else if (outcome.state == "current") {
    console.out << outcome.file << ": has layout " << current_layout() << " already\n";
  } else if (outcome.state == "newer") {
    console.err << outcome.file << ": layout " << outcome.layout << " is none that this program upgrades\n";
  } else {
    console.err << outcome.file << ": is no patient database of this product\n";
  }
}

void write_json(console::Console& console, const Outcome& outcome) {
  support::JsonWriter json(console.out);
  json.begin_object().key("file").text(outcome.file).key("state").text(outcome.state);
  json.key("layout").text(outcome.layout).key("copy").text(outcome.copy);
  json.key("error").integer(outcome.error ? outcome.error->number() : 0);
  json.key("text").text(outcome.error ? outcome.error->what() : "").key("notes").begin_array();
  for (const std::string& note : outcome.notes) json.text(note);
  json.end_array().end_object();
  console.out << '\n';
}

int run_upgrade(const console::Arguments& arguments, console::Console& console) {
  arguments.expect_operands(1, SIZE_MAX, upgrade_usage);
  if (arguments.has("--backup") && arguments.has("--no-backup")) {
    throw console::UsageError("--backup and --no-backup exclude each other.");
  }
  Upgrader upgrader(arguments, console);
  bool all_good = true;
  for (const std::string& file : arguments.operands()) {
    if (upgrader.interrupted()) {
      console.err << "Interrupted before " << file << '\n';
      return console::exit_failed;
    }
    const Outcome outcome = upgrader.upgrade(file);
    arguments.has(json_option.name) ? write_json(console, outcome) : write_text(console, outcome);
    all_good = all_good && outcome.good();
  }
  return all_good ? console::exit_done : console::exit_failed;
}

}  // namespace

const Command upgrade_command{"upgrade",       upgrade_usage,   "Brings databases of older layouts up to date.",
                              upgrade_details, upgrade_options, run_upgrade};

}  // namespace patientdb

#include "apps/patientdb/command.h"
#include "apps/patientdb/database_operand.h"
#include "database/environment.h"
#include "database/open_database.h"
#include "support/encoding.h"

namespace patientdb {
namespace {

constexpr std::string_view password_usage = "FILE [--new-password-file PATHNAME]";

constexpr std::string_view password_details =
    R"(The new password has 3 to 20 characters; in a file of the Jet engine, which encrypts nothing, at most 14. It is the first
line of --new-password-file, else PATIENTDB_NEW_PASSWORD; where neither is given, it is asked for twice at the terminal and not
shown. A file without password gets one, and is encrypted with it.

FILE is written anew beside the old one and takes its place when it is whole: interrupted at any moment, the old password opens
it or the new one. Nobody else may have it open, and it may have no second name in a folder. Copies that were made before keep
the password that they have. A forgotten password cannot be recovered.)";

constexpr console::Option new_password_option{"--new-password-file", "PATHNAME",
                                              "Read the new password from the first line of this file."};

constexpr console::Option password_options[] = {new_password_option, password_file_option, console::help_option};

constexpr std::size_t longest_for_jet = 14;

std::string asked_for(const console::Console& console) {
  if (!console.ask_secret) {
    throw console::UsageError(
        "There is no new password: give it by --new-password-file or PATIENTDB_NEW_PASSWORD, or at a terminal.");
  }
  const auto first = console.ask_secret("New password: ");
  const auto second = first ? console.ask_secret("Once more: ") : std::nullopt;
  if (!second) throw console::UsageError("No new password was given; nothing was changed.");
  if (*first != *second) throw console::UsageError("The two passwords are not the same; nothing was changed.");
  return *first;
}

std::string new_password(const console::Arguments& arguments, const console::Console& console) {
  if (const auto file = arguments.value(new_password_option.name)) return password_from_file(*file);
  if (const auto word = console.environment("PATIENTDB_NEW_PASSWORD")) return *word;
  return asked_for(console);
}

/// A changed password, unlike a new database's, may not be empty: an unset variable in a script must not decrypt a
/// file.
void check_given_password(std::string_view word) {
  if (word.empty() || word.find('\0') != std::string_view::npos) {
    throw console::UsageError("The new password is empty, or holds a NUL; nothing was changed.");
  }
  check_new_password(word);
}

void change_password(engine::Database& database, const std::string& old_word, const std::string& new_word) {
  constexpr auto wrong_password = support::error_number::wrong_password;
  try {
    database.new_password(old_word, new_word);
  } catch (const support::RuntimeError& error) {
    // The file opened, so a wrong password can only mean that the file has none.
    if (error.number() != wrong_password || old_word.empty()) throw;
    database.new_password("", new_word);
  }
}

/// Updates the file's own record of its password, if its layout has one: the word and a blank, as at the creation.
void record_password(engine::Database& database, const std::string& word) {
  const auto row = database.open_recordset("SELECT * FROM db_info");
  if (row->eof()) return;
  for (std::int32_t field = 0; field < row->field_count(); ++field) {
    if (!support::equal_ignoring_case(row->field_name(field), "Password")) continue;
    row->edit();
    row->set_value("Password", word + " ");
    row->update();
  }
}

/// The password itself is changed already; a failure here only leaves the old record.
void try_to_record_password(engine::Database& database, const std::string& word, console::Console& console) {
  try {
    record_password(database, word);
  } catch (const support::RuntimeError& error) {
    if (error.number() == support::error_number::unknown_table) return;
    console.err << "The table db_info still names the old password: error " << error.number() << ": " << error.what()
                << "\n";
  }
}

void tell_password_change(console::Console& console, const std::string& file, bool encrypted, bool is_default) {
  console.out << file << ": has its new password\n";
  if (!encrypted) {
    console.err << "The Jet engine does not encrypt the file: this password keeps accidents out, not people.\n";
  }
  if (is_default) {
    console.err << "This is the default password, which stands in every installation: it protects nothing.\n";
  } else {
    console.err << "The wizard opens files with the default password only; this one is opened by patientdb.\n";
  }
}

int run_password(const console::Arguments& arguments, console::Console& console) {
  arguments.expect_operands(1, 1, password_usage);
  const std::string& file = arguments.operands().front();
  const std::string old_word = password(arguments, console);
  database::Environment environment;
  environment.open_engine = engine_of(arguments);
  const auto engine = database::create_engine(environment, false);
  // The file is opened first, so that nobody types a new password for a file that the old one does not open.
  const auto database = engine->open_database(database_path(file), true, false, database::connect_text(old_word));
  const std::string new_word = new_password(arguments, console);
  check_given_password(new_word);
  const bool encrypted = database->care() != nullptr;
  if (!encrypted && support::character_count(new_word) > longest_for_jet) {
    throw console::UsageError("The Jet engine takes passwords of at most 14 characters.");
  }
  change_password(*database, old_word, new_word);
  try_to_record_password(*database, new_word, console);
  tell_password_change(console, file, encrypted, new_word == database::default_password);
  return console::exit_done;
}

}  // namespace

const Command password_command{"password",       password_usage,   "Gives a file another password.",
                               password_details, password_options, run_password};

}  // namespace patientdb

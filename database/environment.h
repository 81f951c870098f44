// What the database procedures need from the program around them: password, texts, settings file, clock, the engine, a
// way to ask the user, and an object that is told the progress of long work and may end it. The program builds one for
// each process.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "database/engine/choice/engine_choice.h"
#include "database/engine/engine.h"
#include "support/file_system.h"
#include "support/ini.h"
#include "support/language.h"

namespace database {

/// Shows the progress of long work, and knows whether the user wants to end it. All calls may be made any number of
/// times; none raises.
class Progress {
 public:
  virtual ~Progress() = default;
  /// `maximum` is the value at the end of the work, in units that the caller chooses; 0 where it is not known.
  virtual void start(std::string_view caption, std::int32_t maximum) = 0;
  virtual void set_caption(std::string_view caption) = 0;
  virtual void set_value(std::int32_t value) = 0;
  virtual void finish() = 0;
  /// The work goes on; a window may use the moment to answer the user. Long work calls this often.
  virtual void at_work() {}
  /// For work that can end between two of its parts: offers the user to end it, under this caption. Call it between
  /// start() and finish().
  virtual void offer_cancel(std::string_view caption) { static_cast<void>(caption); }
  /// True once the user has accepted that offer.
  virtual bool cancelled() const { return false; }
  /// True once the user wants the work to end at its next row. Nothing of the work is then kept.
  virtual bool interrupted() const { return false; }
  /// An upgrade works towards this minor version on this table; the name is empty where it works on no table.
  virtual void upgrade_step(std::int16_t version, std::string_view table) {
    static_cast<void>(version);
    static_cast<void>(table);
  }
};

/// The number of rows as a progress value; the largest possible one for a larger number.
std::int32_t progress_value(std::int64_t rows);

/// Raises 3059 (cancelled by the user) where `progress` is interrupted. If it is null, nobody can interrupt.
void end_if_interrupted(const Progress* progress);

/// The password that is used where the setting is shorter than the shortest one.
inline constexpr std::string_view default_password = "brimol";
inline constexpr std::size_t shortest_password = 3, longest_password = 20;  ///< characters

/// A message box. The bits of `style` are the platform's (OK/Cancel 1, stop 16, question 32, exclamation 48, Yes/No 4,
/// system-modal 4096). Returns the button: OK 1, Cancel 2, Yes 6, No 7.
using MessageBox = std::function<int(std::string_view text, std::uint32_t style, std::string_view title)>;

/// Rows that an upgrade could not transfer. They stay in their old table.
struct RowsLeft {
  std::string table;
  std::int32_t left = 0, all = 0;
  std::string reason;  ///< of the first row; may be empty
};

/// "1 of 3 rows of imports could not be brought over and stay there: reason".
std::string sentence(const RowsLeft& rows);

/// A copy of a database that another engine wrote, readable by the engine that works. The destructor deletes its file.
class ReadableCopy {
 public:
  virtual ~ReadableCopy() = default;
  virtual const std::string& path() const = 0;
};

struct Environment {
  /// Password of patient databases. If it is too short, the default one counts.
  std::string password;
  /// Null: the machine's own files.
  support::FileSystem* files = nullptr;
  /// The file with the daytime zones ("setup.ini"), section "timezones".
  const support::IniFiles* ini = nullptr;
  std::string settings_file;
  /// Null where there is none; then every text is empty.
  const support::LanguageComponent* language = nullptr;
  /// The description text of a new database. It holds the product word.
  std::string product_description = "vantrix";
  /// Empty: the machine's clock is used.
  std::function<engine::Date()> now;
  std::function<std::unique_ptr<engine::Engine>(std::string_view identifier)> open_engine = engine::open_engine;
  /// Makes a copy of a file that the engine does not know, or raises. Empty: such files cannot be read.
  std::function<std::unique_ptr<ReadableCopy>(const Environment& environment, std::string_view path)> readable_copy;
  /// May raise 3059 where nobody answers a question. Empty: nobody can be asked; a question then raises 3059, and a
  /// message is dropped.
  MessageBox message_box;
  /// Null: no progress is shown.
  Progress* progress = nullptr;
  /// Is told of rows that an upgrade leaves behind; must not raise. Empty: nobody is told.
  std::function<void(const RowsLeft& rows)> rows_left;
  /// Makes the sound before the message of a failure. Empty: there is no sound.
  std::function<void()> beep;
  /// The data folder, in which "meters.mdb" lies (index processing).
  std::string data_folder;

  /// The text of this number in the user's language; empty for an unknown number.
  std::string text(long number) const { return language ? language->loadres(number) : std::string(); }
  support::FileSystem& file_system() const { return files ? *files : support::host_file_system(); }
  /// The present local date and time.
  engine::Date present() const;
  /// The password that patient databases are opened and created with.
  std::string_view patient_password() const;
  /// Shows a message with the product's name as title. Dropped where nobody can be asked.
  void show_message(std::string_view text, std::uint32_t style) const;
};

/// The database that a procedure works on: a path, which the procedure opens and closes itself, or a database that is
/// open already and stays open.
class Target {
 public:
  Target(std::string path) : path_(std::move(path)) {}  // NOLINT(google-explicit-constructor)
  Target(std::string_view path) : path_(path) {}        // NOLINT(google-explicit-constructor)
  Target(const char* path) : path_(path) {}             // NOLINT(google-explicit-constructor)
  Target(engine::Database& open) : open_(&open) {}      // NOLINT(google-explicit-constructor)
  const std::string& path() const noexcept { return path_; }
  /// Null where a path was given.
  engine::Database* open() const noexcept { return open_; }

 private:
  std::string path_;
  engine::Database* open_ = nullptr;
};

}  // namespace database

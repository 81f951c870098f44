// What the database procedures need of the program around them: password, texts, settings file, clock, the engine, a
// way to ask, and somebody who is told how far long work is and may end it. One per process, built by the program's
// edge.
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

/// Long work as it is told to whoever shows it, and the user's wish to end it. All calls may be made any number of
/// times; none raises.
class Progress {
 public:
  virtual ~Progress() = default;
  /// `maximum` is the value at the end of the work, in units of the caller's; 0 where nobody knows that.
  virtual void start(std::string_view caption, std::int32_t maximum) = 0;
  virtual void set_caption(std::string_view caption) = 0;
  virtual void set_value(std::int32_t value) = 0;
  virtual void finish() = 0;
  /// The work goes on: whoever shows it may let its window answer. Work that takes long calls this often.
  virtual void at_work() {}
  /// Work that can be ended between two of its parts offers that, between start() and finish(), under this caption.
  virtual void offer_cancel(std::string_view caption) { static_cast<void>(caption); }
  /// True once the user has taken that offer.
  virtual bool cancelled() const { return false; }
  /// True once the user wants the work to end at its next row, with nothing of it kept.
  virtual bool interrupted() const { return false; }
  /// An upgrade works towards a minor version on a table; the table is empty where it works on none.
  virtual void upgrade_step(std::int16_t version, std::string_view table) {
    static_cast<void>(version);
    static_cast<void>(table);
  }
};

/// A number of rows as a value of it; the largest there is for a larger number.
std::int32_t progress_value(std::int64_t rows);

/// Raises 3059 (cancelled by the user) where `progress` is interrupted. Null: nobody can interrupt.
void end_if_interrupted(const Progress* progress);

/// Password used where the setting is shorter than the shortest.
inline constexpr std::string_view default_password = "brimol";
inline constexpr std::size_t shortest_password = 3, longest_password = 20;  ///< characters

/// A message box: style bits as the platform counts them (OK/Cancel 1, stop 16, question 32, exclamation 48,
/// Yes/No 4, system-modal 4096). Returns the button: OK 1, Cancel 2, Yes 6, No 7.
using MessageBox = std::function<int(std::string_view text, std::uint32_t style, std::string_view title)>;

/// Rows that an upgrade could not bring over; they stay in their old table.
struct RowsLeft {
  std::string table;
  std::int32_t left = 0, all = 0;
  std::string reason;  ///< of the first one; may be empty
};

/// "1 of 3 rows of imports could not be brought over and stay there: reason".
std::string sentence(const RowsLeft& rows);

/// A copy of a database that another engine wrote, for the one that works; its file goes with the object.
class ReadableCopy {
 public:
  virtual ~ReadableCopy() = default;
  virtual const std::string& path() const = 0;
};

struct Environment {
  /// Password of patient databases; one that is too short means the default one.
  std::string password;
  /// Null: the machine's own.
  support::FileSystem* files = nullptr;
  /// The file with the daytime zones ("setup.ini"), section "timezones".
  const support::IniFiles* ini = nullptr;
  std::string settings_file;
  /// Null where there is none: every text is empty then.
  const support::LanguageComponent* language = nullptr;
  /// Description text of a new database; holds the product word.
  std::string product_description = "vantrix";
  /// Empty: the machine's clock.
  std::function<engine::Date()> now;
  std::function<std::unique_ptr<engine::Engine>(std::string_view identifier)> open_engine = engine::open_engine;
  /// Makes a copy of a file that the engine does not know, or raises. Empty: such files cannot be read.
  std::function<std::unique_ptr<ReadableCopy>(const Environment& environment, std::string_view path)> readable_copy;
  /// May raise 3059 where a question finds no answer. Empty: nobody can be asked, so that what needs an answer raises
  /// 3059; a message is dropped.
  MessageBox message_box;
  /// Null: no progress is shown.
  Progress* progress = nullptr;
  /// Told of rows that an upgrade leaves behind. Empty: nobody is. Must not raise.
  std::function<void(const RowsLeft& rows)> rows_left;
  /// The sound before the message of a failure. Empty: none.
  std::function<void()> beep;
  /// Data folder with "meters.mdb" (index processing).
  std::string data_folder;

  /// The language text; empty for an unknown number.
  std::string text(long number) const { return language ? language->loadres(number) : std::string(); }
  support::FileSystem& file_system() const { return files ? *files : support::host_file_system(); }
  /// The present date and time, local.
  engine::Date present() const;
  /// The password that patient databases are opened and created with.
  std::string_view patient_password() const;
  /// Shows a message with the product's name as title; dropped where nothing can be asked.
  void show_message(std::string_view text, std::uint32_t style) const;
};

/// Where a database procedure works: a path, which it opens and closes itself, or a database that is open already and
/// stays open.
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

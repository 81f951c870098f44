// The error journal: a text file for people who have to find out why something is missing on a machine. It has one line
// for each step that was passed over: time, procedure, error number, text. Quotations in a text and all paths are left
// out, so that no patient's data, password or value of a statement can reach the file. If a journal cannot be written,
// the work goes on as if there were none: nothing here raises anything but out of memory.
#pragma once

#include <cstdint>
#include <ctime>
#include <functional>
#include <string>
#include <string_view>

#include "support/error.h"

namespace support {

/// What the head of a journal says about the program that writes it. Of the two files, only the names are written.
struct JournalProgram {
  std::string software;
  std::string version;
  std::string executable;
  std::string settings_file;
};

/// A journal that would grow beyond this size is begun anew; the old one is kept beside it with the ending ".1".
constexpr std::uint64_t most_journal_bytes = std::uint64_t{1} << 20U;

class ErrorJournal {
 public:
  using Clock = std::function<std::time_t()>;

  /// Writes a line for every step that is passed over while this object lives. The first line creates the file at
  /// `host_path`, readable by the user alone. An existing file that is no journal is left as it is.
  ErrorJournal(
      std::string host_path, JournalProgram program, Clock clock = [] { return std::time(nullptr); });

 private:
  void write(std::string_view label, const RuntimeError& error) const noexcept;
  void append(std::string_view line) const;
  std::string head() const;

  std::string path_;
  JournalProgram program_;
  Clock clock_;
  SkippedStepWatch watch_;
};

/// An error's text as a journal may hold it: one line of at most 300 bytes. "…" replaces everything between the first
/// and the last quotation mark, and everything from the first word with a path separator to the end.
std::string journal_text(std::string_view description);

}  // namespace support

// What a finish wrote or could not write, and the texts that tell it to the user: what was written and where; what is
// missing, why, and what to do.
#pragma once

#include <algorithm>
#include <string>
#include <vector>

#include "support/error.h"
#include "wizard/installation_config.h"

namespace wizard {

/// The entries are in the order of the finish.
struct FinishReport {
  enum class What { RegistryValue, IniKey, File, RecycledFile };
  struct Entry {
    What what;
    std::string place;  ///< key with its root, or file
    std::string name;   ///< name of the value, or section and key; for a file, the part of it that was written
    std::string value;  ///< empty for files; never the password
    bool written;
    std::string problem;  ///< empty when written
    int error = 0;        ///< number of the error; 0 if there was none
    long reason = 0;      ///< number of the text that tells the user why, if the error does not
  };
  std::vector<Entry> entries;

  /// True if everything was written.
  bool complete() const noexcept { return std::ranges::all_of(entries, &Entry::written); }
};

/// What was written: the names, and below them the places, each name once for all places that hold the same. What was
/// not written is left out. Lines end in "\r\n".
std::string written_text(const InstallationConfig& config, const FinishReport& report);

/// Texts that tell why something was not written, and what to do, when no error tells it.
namespace reason_text {
inline constexpr long registry_refuses = 6026, text_does_not_fit = 6028, no_free_name = 6027, not_read = 6030,
                      no_home_page = 6031, not_recycled = 6032, no_recycle_bin = 6054;
}  // namespace reason_text

/// Why something fails with this error, and what to do, in the user's language; the error's number if there is no text
/// for it.
std::string error_reason(const InstallationConfig& config, const support::RuntimeError& error);

/// The name of an entry for the user.
std::string name_of_entry(const InstallationConfig& config, const FinishReport::Entry& entry);

struct FinishProblem {
  std::string what;       ///< what is missing
  std::string reason;     ///< why, and what to do
  std::string technical;  ///< place, value and error for programmers, in English
};

/// The problems in the report's order. Problems with the same name and reason are joined, with all their technical
/// lines. Empty if everything was written.
std::vector<FinishProblem> finish_problems(const InstallationConfig& config, const FinishReport& report);

}  // namespace wizard

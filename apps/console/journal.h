// The error journal of a program's run. There is none, unless the arguments or the installation's settings ask for one.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "apps/console/arguments.h"
#include "support/error_journal.h"

namespace console {

inline constexpr Option journal_option{"--journal", "FILE",
                                       "Keep an error journal: which statements were passed over."};

/// The journal in `file` (a host path), if it is given and not empty. Otherwise the journal in the file that
/// "setup.ini" names under the key "journal" in the section "setup"; that is a Windows path, absolute or relative to
/// `folder`. `folder` is the installation's, a Windows path with its trailing backslash; empty if it is not known. Null
/// if neither names a file.
std::unique_ptr<support::ErrorJournal> open_journal(std::string_view program, const std::optional<std::string>& file,
                                                    const std::string& folder);

}  // namespace console

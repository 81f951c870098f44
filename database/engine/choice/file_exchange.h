// Another database file in the place of one that is there, whichever engine wrote the two.
#pragma once

#include <string_view>

namespace engine {

/// Puts `source`, a database that is whole, closed and synced, in the place of the file `target`; all are Windows paths
/// of one folder. The old file stays under the name `kept` where that is not empty. At any moment the old file or the
/// new one has its name (where the file system gives a file no second name: or `kept` has the old one and nobody has
/// that name). `target` is as it was, and `source` may be gone, on failure: 3045 where anybody has it open, 3204 where
/// `kept` is taken, 3343 where the journal of a change that was not completed lies beside it, 3043 where the system
/// refuses; and as an opening raises where nothing can be opened.
void exchange_file(std::string_view source, std::string_view target, std::string_view kept);

}  // namespace engine

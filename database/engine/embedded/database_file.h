// What is known of a database file before it is opened, and of the place of a new one. Paths are the host's.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "database/engine/embedded/file_keys.h"
#include "support/error.h"

namespace engine::embedded {

/// Error 3343 for a file that the Jet engine wrote: the automation objects open it.
class JetFileError : public support::RuntimeError {
 public:
  JetFileError();
};

struct DatabaseFile {
  bool encrypted = false;
  /// The file begins as a file of another kind does. It is a database only where a key fits.
  bool doubtful = false;
  FileSalt salt = {};  ///< of an encrypted file
};

/// True where a journal lies beside the file. The journal undoes an incomplete transaction; until then the file may end
/// anywhere.
bool has_journal(const std::string& host_path);

/// Raises the error of a place where no file can be opened: 3044 no such folder, 3024 missing, 3051 no file. Never
/// opens the file: on POSIX, closing it again would take away the locks that other handles of this process hold.
void check_place_of_file(const std::string& host_path);

/// How many bytes from the beginning of a file tell what it is.
inline constexpr std::size_t telling_size = 32;
/// Raises 3343 where it cannot be a database of this engine, as JetFileError where it is one of Jet's. `beginning` may
/// be shorter where the file is. Where there is a journal, the end of the file tells nothing.
DatabaseFile identify_database_file(std::string_view beginning, std::int64_t file_size, bool with_journal);

/// For an encrypted file that did not open. Raises 3343 where the password fits its first page: the file then has pages
/// of another size than ours, which the error tells, or, where the password seemed wrong, is damaged behind that page.
/// `beginning` holds up to most_page_size bytes as they are on the disk.
void refuse_fitting_password(std::string_view beginning, std::int64_t file_size, std::string_view password,
                             bool seemed_wrong);
inline constexpr std::size_t most_page_size = 65536;

/// Raises the error of a place where no database can be created: 3204 a file is there, 3044 no such folder.
void check_place_of_new_file(const std::string& host_path);

/// Removes the file if it is still empty.
void remove_empty_file(const std::string& host_path) noexcept;

}  // namespace engine::embedded

#include "database/engine/embedded/file_copy.h"

#include <filesystem>

#include "database/engine/embedded/database_file.h"
#include "database/engine/engine_error.h"

namespace engine::embedded {
namespace {

/// The new file, gone again unless keep() was reached.
class CopiedFile {
 public:
  explicit CopiedFile(const std::string& host_path) : host_path_(host_path) { create_private_file(host_path); }
  ~CopiedFile() {
    if (kept_) return;
    std::error_code ignored;
    std::filesystem::remove(std::u8string(host_path_.begin(), host_path_.end()), ignored);
  }
  CopiedFile(const CopiedFile&) = delete;
  CopiedFile& operator=(const CopiedFile&) = delete;
  void keep() { kept_ = true; }

 private:
  std::string host_path_;
  bool kept_ = false;
};

}  // namespace

void save_copy(Session& session, const std::string& host_path) {
  if (session.in_transaction()) raise(3246);
  Connection& source = session.connection();
  check_place_of_new_file(host_path);
  CopiedFile file{host_path};
  {
    Connection copy{host_path, {}};
    if (!session.password().empty()) copy.use_key(FileKey{session.password(), new_salt()});
    copy.first_read();
    source.copy_to(copy);
    copy.check_integrity();
  }
  file.keep();
}

}  // namespace engine::embedded

#include "wizard/finish_writer.h"

#include <algorithm>

#include "support/error.h"

namespace wizard {

namespace {

using What = FinishReport::What;

/// Keeps the last statement that was passed over, beside telling the listener that was there before.
class LastSkipped {
 public:
  /// `otherwise` is the reason where none was passed over.
  explicit LastSkipped(std::string_view otherwise)
      : previous_(
            support::set_skipped_statement_listener([this](std::string_view label, const support::RuntimeError& error) {
              text_ = "error " + std::to_string(error.number()) + ": " + error.what();
              if (previous_) previous_(label, error);
            })),
        text_(otherwise) {}
  ~LastSkipped() { support::set_skipped_statement_listener(std::move(previous_)); }
  LastSkipped(const LastSkipped&) = delete;
  LastSkipped& operator=(const LastSkipped&) = delete;
  const std::string& reason() const noexcept { return text_; }

 private:
  support::SkippedStatementListener previous_;
  std::string text_;
};

}  // namespace

void FinishWriter::record(FinishReport::Entry entry) { report_.entries.push_back(std::move(entry)); }

void FinishWriter::registry_value(std::string_view key, std::string_view name, std::string_view value) {
  const LastSkipped skipped{"the registry cannot hold this text"};
  const bool written = !previewing() && support::WriteRegString(*context_.ports.registry, support::RootKey::CurrentUser,
                                                                key, name, value);
  record({What::RegistryValue, "HKEY_CURRENT_USER\\" + std::string(key), std::string(name), std::string(value), written,
          written || previewing() ? "" : skipped.reason()});
}

void FinishWriter::ini_key(std::string_view file, std::string_view section, std::string_view key,
                           std::string_view value) {
  const LastSkipped skipped{""};
  const bool written = !previewing() && support::Procedure{"wizard!FinishIni"}.step([&] {
    if (context_.ports.ini->write(file, section, key, value)) return;
    throw support::RuntimeError(75, "Cannot write " + std::string(file));
  });
  record({What::IniKey, std::string(file), "[" + std::string(section) + "] " + std::string(key), std::string(value),
          written, written || previewing() ? "" : skipped.reason()});
}

bool FinishWriter::file(std::string_view path, std::string_view what, const std::function<bool()>& action) {
  if (previewing()) {
    record({What::File, std::string(path), std::string(what), "", false, ""});
    return true;
  }
  const LastSkipped skipped{"could not be written"};
  bool written = false;
  support::Procedure{"wizard!FinishFile"}.step([&] { written = action(); });
  record({What::File, std::string(path), std::string(what), "", written, written ? "" : skipped.reason()});
  return written;
}

void FinishWriter::problem(What kind, std::string_view place, std::string_view what, std::string_view reason) {
  record({kind, std::string(place), std::string(what), "", false, previewing() ? "" : std::string(reason)});
}

void FinishWriter::recycle(std::string_view folder, std::string_view pattern) {
  const std::vector<std::string> found = context_.ports.files->files(folder, pattern);
  std::vector<std::string> moved;
  // Asked for even where nothing was found here: the shell has the last word on what matches.
  if (!previewing()) moved = context_.ports.user->recycle(folder, pattern);
  for (const std::string& name : found)
    if (std::ranges::find(moved, name) == moved.end())
      record({What::RecycledFile, std::string(folder) + name, "", "", false,
              previewing() ? "" : "was not moved to the recycle bin"});
  for (const std::string& name : moved) record({What::RecycledFile, std::string(folder) + name, "", "", true, ""});
}

}  // namespace wizard

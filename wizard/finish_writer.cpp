#include "wizard/finish_writer.h"

#include <fmt/core.h>

#include <algorithm>

#include "support/encoding.h"
#include "support/error.h"
#include "wizard/finish_report.h"

namespace wizard {

namespace {

using What = FinishReport::What;

/// Why something failed: the error of the last step that was passed over meanwhile or, if there was none, another
/// reason.
struct Reason {
  std::string text;
  int number = 0;
};

Reason reason_of(const support::RuntimeError& error) {
  return {fmt::format("error {}: {}", error.number(), error.what()), error.number()};
}

Reason reason_of(const support::Outcome& outcome, std::string_view otherwise) {
  return outcome.last() ? reason_of(*outcome.last()) : Reason{std::string(otherwise)};
}

bool fits_registry(std::string_view text) {
  return support::fits_cp1252(text) && text.find('\0') == std::string_view::npos;
}

}  // namespace

void FinishWriter::record(FinishReport::Entry entry) {
  report_.entries.push_back(std::move(entry));
  if (!previewing() && context_.ports.progress) context_.ports.progress->at_work();
}

void FinishWriter::registry_value(std::string_view key, std::string_view name, std::string_view value) {
  const bool fits = fits_registry(value);
  bool written = false;
  const support::Outcome outcome = support::outcome_of([&] {
    written = !previewing() &&
              support::WriteRegString(*context_.ports.registry, support::RootKey::CurrentUser, key, name, value);
  });
  const Reason reason =
      reason_of(outcome, fits ? "the registry cannot be written" : "the registry cannot hold this text");
  record({What::RegistryValue, "HKEY_CURRENT_USER\\" + std::string(key), std::string(name), std::string(value), written,
          written || previewing() ? "" : reason.text, reason.number,
          fits ? reason_text::registry_refuses : reason_text::text_does_not_fit});
}

void FinishWriter::ini_key(std::string_view file, std::string_view section, std::string_view key,
                           std::string_view value) {
  support::Procedure procedure{"wizard!FinishIni"};
  const bool written = !previewing() && procedure.step([&] {
    if (context_.ports.ini->write(file, section, key, value)) return;
    throw support::RuntimeError(support::error_number::path_file_access, "Cannot write " + std::string(file));
  });
  const Reason reason = procedure.pending() ? reason_of(procedure.error()) : Reason{};
  record({What::IniKey, std::string(file), "[" + std::string(section) + "] " + std::string(key), std::string(value),
          written, reason.text, reason.number});
}

bool FinishWriter::file(std::string_view path, std::string_view what, const std::function<bool()>& action) {
  if (previewing()) {
    record({What::File, std::string(path), std::string(what), "", false, ""});
    return true;
  }
  bool written = false;
  const support::Outcome outcome =
      support::outcome_of([&] { support::Procedure{"wizard!FinishFile"}.step([&] { written = action(); }); });
  const Reason reason = reason_of(outcome, "could not be written");
  record({What::File, std::string(path), std::string(what), "", written, written ? "" : reason.text, reason.number});
  return written;
}

void FinishWriter::problem(What kind, std::string_view place, std::string_view what, std::string_view reason,
                           long reason_text) {
  record({kind, std::string(place), std::string(what), "", false, previewing() ? "" : std::string(reason), 0,
          reason_text});
}

void FinishWriter::discard(std::string_view folder, std::string_view pattern, Discard how) {
  const std::vector<std::string> found = context_.ports.files->files(folder, pattern);
  const bool keep = how == Discard::Keep;
  std::string name;
  if (how == Discard::ForGood) name = "deleted for good";
  if (keep && previewing()) name = "only after asking, since there is no recycle bin";
  std::vector<std::string> moved;
  // The shell is asked even if nothing was found here, because it decides what matches.
  if (!previewing() && !keep) moved = context_.ports.user->recycle(folder, pattern);
  const std::string reason =
      keep ? "there is no recycle bin for it; it would be deleted for good" : "was not moved to the recycle bin";
  for (const std::string& file : found)
    if (std::ranges::find(moved, file) == moved.end())
      record({What::RecycledFile, std::string(folder) + file, name, "", false, previewing() ? "" : reason, 0,
              keep ? reason_text::no_recycle_bin : reason_text::not_recycled});
  for (const std::string& file : moved) record({What::RecycledFile, std::string(folder) + file, name, "", true, ""});
}

}  // namespace wizard

#include "database/engine/embedded/file_check.h"

#include <fmt/core.h>

#include <algorithm>
#include <charconv>
#include <map>
#include <string>
#include <utility>

#include "support/error.h"

namespace engine::embedded {
namespace {

/// More of them say nothing more of a file that is beyond repair.
constexpr int most_faults = 100;
constexpr int pages_between_looks = 256;

using Look = std::function<void(std::int64_t done, std::int64_t all)>;

void check_pages(Connection& file, const FaultsTold& tell, const Look& look) {
  const std::int64_t size = file.integer("PRAGMA page_size"), bytes = file.file_size();
  const std::int64_t wanted = file.integer("PRAGMA page_count"), pages = bytes / size;
  if (pages < wanted) {
    tell({"page", {}, fmt::format("the file ends before its last pages: {} of {} are there", pages, wanted)});
  }
  int told = 0;
  for (std::int64_t page = 1; page <= std::min(pages, wanted); ++page) {
    if (page % pages_between_looks == 0) look(page, wanted);
    if (file.is_page_sound(page, size) || ++told > most_faults) continue;
    tell({"page", {}, fmt::format("page {} of {} cannot be read, or is not as it was written", page, wanted)});
  }
  if (told > most_faults) tell({"page", {}, fmt::format("{} more pages like these", told - most_faults)});
}

/// Whose the trees and indexes are that SQLite speaks of.
class Owners {
 public:
  explicit Owners(Connection& file) {
    const PooledStatement rows = file.statement("SELECT rootpage, name, tbl_name FROM sqlite_schema");
    while (rows->step()) {
      roots_.emplace(rows->integer(0), rows->text(2));
      names_.emplace(rows->text(1), rows->text(2));
    }
  }
  /// The table that a line of the report is about; empty where that cannot be told.
  std::string table_of(std::string_view line) const {
    if (const std::string_view number = word_behind(line, "Tree "); !number.empty()) {
      std::int64_t root = 0;
      std::from_chars(number.data(), number.data() + number.size(), root);
      const auto owner = roots_.find(root);
      if (owner != roots_.end()) return owner->second;
    }
    for (const std::string_view mark : {"missing from index ", "entries in index ", "entry in index "}) {
      const std::size_t place = line.find(mark);
      if (place == std::string_view::npos) continue;
      const auto owner = names_.find(line.substr(place + mark.size()));
      if (owner != names_.end()) return owner->second;
    }
    return {};
  }

 private:
  static std::string_view word_behind(std::string_view line, std::string_view mark) {
    const std::size_t place = line.find(mark);
    if (place == std::string_view::npos) return {};
    const std::string_view rest = line.substr(place + mark.size());
    return rest.substr(0, rest.find(' '));
  }

  std::map<std::int64_t, std::string> roots_;
  std::map<std::string, std::string, std::less<>> names_;
};

void check_structure(Connection& file, const FaultsTold& tell) {
  const Owners owners{file};
  const PooledStatement report = file.statement(fmt::format("PRAGMA integrity_check({})", most_faults));
  while (report->step()) {
    const std::string_view text = report->text(0);
    if (text == "ok") continue;
    // A line may hold several, and begins with the file's name in SQLite's words.
    for (std::size_t begin = 0; begin < text.size();) {
      const std::size_t end = std::min(text.find('\n', begin), text.size());
      const std::string_view line = text.substr(begin, end - begin);
      begin = end + 1;
      if (!line.starts_with("***")) tell({"structure", owners.table_of(line), std::string(line)});
    }
  }
}

bool tells_of_the_file(const support::RuntimeError& error) {
  constexpr auto disk = support::error_number::disk_error;
  constexpr auto in_use = support::error_number::file_in_use;
  constexpr auto cancelled = support::error_number::cancelled;
  return error.number() != disk && error.number() != in_use && error.number() != cancelled;
}

/// What cannot be looked at to its end for damage is a fault of its own.
template <typename Check>
void run(std::string_view kind, const FaultsTold& tell, Check&& check) {
  try {
    std::forward<Check>(check)();
  } catch (const support::RuntimeError& error) {
    if (!tells_of_the_file(error)) throw;
    tell({kind, {}, std::string("could not be looked at to the end: ") + error.what()});
  }
}

}  // namespace

bool check_file(Connection& file, const StoredCatalogue& catalogue, const FaultsTold& tell, const Look& look) {
  run("page", tell, [&] { check_pages(file, tell, look); });
  try {
    file.integer("SELECT count(*) FROM sqlite_schema");
  } catch (const support::RuntimeError& error) {
    if (!tells_of_the_file(error)) throw;
    tell({"structure", {}, "the list of the tables is damaged: none of them can be read"});
    return false;
  }
  run("structure", tell, [&] { check_structure(file, tell); });
  run("catalogue", tell, [&] { check_catalogue(file, catalogue, tell); });
  run("rule", tell, [&] { check_rules(file, catalogue, tell); });
  return true;
}

}  // namespace engine::embedded

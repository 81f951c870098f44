// The availability summary of all categories over ten years; and over one year, to show how it grows.
#include "database/availability.h"

#include <memory>
#include <optional>
#include <stdexcept>

#include "bench/filled_file.h"
#include "bench/jobs.h"
#include "bench/patient_file.h"
#include "bench/straight.h"
#include "database/query_filter.h"

namespace bench {
namespace {

constexpr int category_count = 28;

/// The union in SQLite's own words: its test for Null, and the category's number where the text names an alias of the
/// same list.
std::string straight_union() {
  std::string text;
  for (int number = 0; number < category_count; ++number) {
    database::AvailabilityRequest request;
    request.categories = 1 << number;
    std::string part = database::availability_query(request);
    part.resize(part.rfind(" ORDER BY"));
    database::put_in(part, "isnull(vdate)=0", "vdate IS NOT NULL");
    database::put_in(part, "isnull(dateofimport)=0", "dateofimport IS NOT NULL");
    database::put_in(part, "stdev(", "jet_stdev(");
    if (part.find("FROM patdat_doctor") == std::string::npos && part.find("FROM memos") == std::string::npos) {
      database::put_in(part, "+typ+", "+" + std::to_string(number) + "+");
      database::put_in(part, "avg(typ)", "avg(" + std::to_string(number) + ")");
    }
    text += (number == 0 ? "" : " UNION ") + part;
  }
  return text + " ORDER BY typ";
}

/// The file is made at its first use, so that a run of other jobs does not wait for it.
class Summary {
 public:
  Summary(std::filesystem::path path, int glucose_rows) : path_(std::move(path)), glucose_rows_(glucose_rows) {}

  void ours() { expect(database::find_availability({}, windows_path(file().path), {}).size()); }

  void straight() {
    const StraightDatabase database = open_straight(file().path, file().key);
    const StraightStatement rows = prepare(database.get(), straight_union());
    std::size_t found = 0;
    int result = SQLITE_ROW;
    while ((result = sqlite3_step(rows.get())) == SQLITE_ROW) found += sqlite3_column_int64(rows.get(), 0) > 0 ? 1 : 0;
    check(database.get(), result);
    expect(found);
  }

 private:
  const FilledFile& file() {
    if (!file_) file_ = create_filled_file(path_, glucose_rows_);
    return *file_;
  }

  /// Both sides must find the same categories.
  void expect(std::size_t found) {
    if (!found_) found_ = found;
    if (found != *found_ || found == 0) throw std::runtime_error("the two summaries differ");
  }

  std::filesystem::path path_;
  int glucose_rows_;
  std::optional<FilledFile> file_;
  std::optional<std::size_t> found_;
};

Job summary_of(const std::filesystem::path& folder, const char* name, int glucose_rows) {
  const auto summary = std::make_shared<Summary>(folder / name, glucose_rows);
  return {"availability summary of ten years", 0.7, [summary] { summary->ours(); }, [summary] { summary->straight(); }};
}

}  // namespace

Job summary_job(const std::filesystem::path& folder) { return summary_of(folder, "summary.das", ten_years_of_glucose); }

GrowthJob summary_growth_job(const std::filesystem::path& folder) {
  return {"availability summary, ten years beside one", summary_of(folder, "summary10.das", ten_years_of_glucose),
          summary_of(folder, "summary1.das", ten_years_of_glucose / 10)};
}

}  // namespace bench

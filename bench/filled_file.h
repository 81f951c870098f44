// A database of the current layout with the entries of ten years, on which the summary is measured.
#pragma once

#include <filesystem>
#include <string>

namespace bench {

/// Glucose values in ten years: one every five minutes.
inline constexpr int ten_years_of_glucose = 1'050'000;

struct FilledFile {
  std::string path;  ///< the host's path
  std::string key;   ///< in the form that sqlite3_key takes
};

/// Creates a patient database and fills it with `glucose_rows` glucose values over 3,650 days. The numbers of the other
/// entries are in proportion: for 1,050,000 glucose values there are 150,000 pump entries, 30,000 insulin doses, 15,000
/// meals and 2,000 of each other kind.
FilledFile create_filled_file(const std::filesystem::path& path, int glucose_rows);

}  // namespace bench

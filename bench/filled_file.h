// A database of the current layout with the entries of ten years: the size that the summary is measured at.
#pragma once

#include <filesystem>
#include <string>

namespace bench {

/// Glucose values in ten years: one every five minutes.
inline constexpr int ten_years_of_glucose = 1'050'000;

struct FilledFile {
  std::string path;  ///< of this host
  std::string key;   ///< as sqlite3_key takes it
};

/// Creates a patient database and fills it with `glucose_rows` glucose values over 3,650 days, and the other kinds of
/// entries in the proportion of ten years: 150,000 pump entries, 30,000 insulin doses, 15,000 meals and 2,000 of each
/// of the rest to 1,050,000.
FilledFile create_filled_file(const std::filesystem::path& path, int glucose_rows);

}  // namespace bench

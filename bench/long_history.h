// The database of a patient who has used a pump and a sensor for years: layout 4.0, with 288 glucose values, 24 basal
// rates and 17 boluses a day.
#pragma once

#include <filesystem>

#include "database/environment.h"

namespace bench {

inline constexpr int ten_years = 3650, one_year = 365;
/// A day in 2009, in days since 1899-12-30.
inline constexpr int first_day = 40000;

class LongHistory {
 public:
  /// The file is made at the first copy.
  LongHistory(std::filesystem::path folder, int days);
  void copy_to(const std::filesystem::path& target);
  int days() const { return days_; }

 private:
  void create() const;
  std::filesystem::path folder_, file_;
  int days_;
};

/// An environment in which every question is answered with OK.
database::Environment willing_environment();

}  // namespace bench

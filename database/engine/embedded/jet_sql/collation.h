// The order of texts: without regard to case, accented letters behind their plain ones, trailing blanks do not count.
#pragma once

#include <string_view>

namespace engine::embedded::jet_sql {

inline constexpr const char* collation_name = "JET";

/// Negative, 0 or positive, as `left` stands before, with or behind `right`. UTF-8; malformed bytes are characters of
/// their own behind all others.
int compare_texts(std::string_view left, std::string_view right) noexcept;

}  // namespace engine::embedded::jet_sql

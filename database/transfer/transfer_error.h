// Error numbers that more than one place of the exporting and importing of tables raises.
#pragma once

namespace transfer {

inline constexpr auto unknown_format = support::error_number::unknown_format;
inline constexpr auto cannot_convert = support::error_number::conversion;

}  // namespace transfer

// Error numbers that more than one place of the exporting and importing of tables raises.
#pragma once

namespace transfer {

inline constexpr int unknown_format = 3343;
inline constexpr int cannot_convert = 3421;

}  // namespace transfer

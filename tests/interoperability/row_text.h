// A row in the form that the test and the foreign tool both write, so that rows can be compared bit for bit.
#pragma once

#include <string>
#include <string_view>

namespace interoperability {

/// Shortest text that reads back as the same number; whole numbers without a point.
std::string number_text(double number);
/// In quotation marks; line ends, quotation marks and backslashes become "\n", "\r", "\"" and "\\".
std::string quoted_text(std::string_view text);

}  // namespace interoperability

// A line that a person types at the terminal and that is not shown there, such as a password.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace console {

/// See Console::ask_secret. Empty where standard input is no terminal. What was typed is neither echoed nor left in the
/// terminal; its settings are put back afterwards, also when the user gives up.
std::function<std::optional<std::string>(std::string_view prompt)> secret_input();

}  // namespace console

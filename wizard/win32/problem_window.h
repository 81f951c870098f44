// What a finish could not write, shown over the wizard's window and in its style: what is missing, why and what to do;
// what programmers want to know comes by a button.
#pragma once

#include <windows.h>

#include <vector>

#include "wizard/finish_report.h"
#include "wizard/installation_config.h"

namespace wizard::win32 {

/// The text that lists the problems, among the children of the window.
inline constexpr int problem_list_id = 101, details_button_id = 102;

/// Returns when the user has closed it. The owner takes no input meanwhile.
void show_problems(HWND owner, const InstallationConfig& config, const std::vector<FinishProblem>& problems);

}  // namespace wizard::win32

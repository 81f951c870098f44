// Page "Medikamente": the names of up to three drugs, beside insulin.
#pragma once

#include <array>
#include <string>

#include "wizard/context.h"

namespace wizard {

void show_drugs(Context& context, const std::array<std::string, 3>& drugs);
/// The fields' texts without outer blanks.
std::array<std::string, 3> gather_drugs(const form::Form& form);

}  // namespace wizard

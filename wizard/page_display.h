// Shows the page of a step and the illustration beside it.
#pragma once

#include <string_view>

#include "wizard/form/form.h"

namespace wizard {

/// Shows the container whose tag is the step's name, whatever its case and a "-" in it, and hides the others. A name
/// without a page shows none.
void show_page(form::Form& form, std::string_view step);

/// Sets the picture beside the pages to that of the page shown.
void show_illustration(form::Form& form);

/// Shows what the selected style of the main window looks like.
void show_style_preview(form::Form& form);

}  // namespace wizard

// Where the focus goes when a page comes up.
#pragma once

#include "wizard/form/form.h"

namespace wizard::win32 {

/// The first control of the page shown that a user fills in; the button Next where there is none. Null for a form
/// without both.
const form::Control* first_field(const form::Form& form);

}  // namespace wizard::win32

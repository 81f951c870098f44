// What a screen reader says about a control of the form: the same that the page shows to the eye by the places of its
// labels, units, groups and headings.
#pragma once

#include <string>

#include "wizard/form/form.h"
#include "wizard/installation_config.h"

namespace wizard {

struct Spoken {
  std::string name;         ///< empty: the control's own text is its name, or it has none
  std::string description;  ///< what it belongs to, or what it is for; may be empty
  bool silent = false;      ///< decoration: not mentioned
  friend bool operator==(const Spoken&, const Spoken&) = default;
};

/// Reads the form as it is now; texts come from the installation's language.
Spoken spoken(const form::Form& form, const InstallationConfig& config, const form::Control& control);

}  // namespace wizard

// What the whole run shares: the ports, the installation, the form, and short functions that read, show and ask through
// them.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "database/environment.h"
#include "support/error.h"
#include "wizard/form/form.h"
#include "wizard/installation_config.h"
#include "wizard/ports.h"

namespace wizard {

/// A patient index that this run created, or tried to.
struct CreatedIndex {
  std::string path;
  std::optional<support::RuntimeError> failure;  ///< nothing if it was created
};

/// The text in a text or combo box, without outer blanks, and no longer than the field allows.
std::string typed_text(const form::Control& box);

struct Context {
  Ports ports;
  InstallationConfig config;
  form::Form form;
  /// The patient indexes that were missing, in the order in which this run found that out; each path once.
  std::vector<CreatedIndex> created_indexes;
  /// Why not all patient databases of the index in use have the current layout: the first failure, or 3059 if the user
  /// cancelled the work. Nothing if they all have it.
  std::optional<support::RuntimeError> patients_failure = {};

  /// The environment for the database procedures, at this moment. It points into this context and must not be kept.
  database::Environment environment() const;

  /// A value of an ini file, read through the buffer of 4096 characters; `fallback` if the file has none.
  std::string ini_value(std::string_view file, std::string_view section, std::string_view key,
                        std::string_view fallback = {}) const;
  /// A text value under the current user root, trimmed; `fallback` if it is missing or blank.
  std::string user_value(std::string_view key, std::string_view name, std::string_view fallback) const;

  /// Makes the text the control's caption.
  void show_text(form::Control& control, long number) const;
  /// Shows the text in a message box with the window's title, in a style of `message_style`; returns the button.
  int message(long number, std::uint32_t style) const;
};

}  // namespace wizard

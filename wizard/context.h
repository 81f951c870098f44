// What the whole run shares: the ports, the installation, the form, and short ways to read, show and ask through them.
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
  std::optional<support::RuntimeError> failure;  ///< nothing where it was created
};

/// What was typed into a text or combo box, without outer blanks, and no more than the field takes.
std::string typed_text(const form::Control& box);

struct Context {
  Ports ports;
  InstallationConfig config;
  form::Form form;
  /// The patient indexes that were missing, in the order in which this run came upon them; each path once.
  std::vector<CreatedIndex> created_indexes;
  /// Why patient databases of the index in use are not all of the current layout: the first failure, or 3059 where the
  /// user ended the work. Nothing where they are.
  std::optional<support::RuntimeError> patients_failure = {};

  /// What the database procedures need, as things stand now: it points into this context and is not to be kept.
  database::Environment environment() const;

  /// A value of an ini file, through the 4096-character buffer; `fallback` where the file has none.
  std::string ini_value(std::string_view file, std::string_view section, std::string_view key,
                        std::string_view fallback = {}) const;
  /// A text value under the current user root, trimmed; `fallback` where it is missing or blank.
  std::string user_value(std::string_view key, std::string_view name, std::string_view fallback) const;

  /// Gives the control the text as its caption.
  void show_text(form::Control& control, long number) const;
  /// Shows the text under the title of the window, in a style of `message_style`; returns the button.
  int message(long number, std::uint32_t style) const;
};

}  // namespace wizard

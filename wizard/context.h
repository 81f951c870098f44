// What all pages of the wizard share: the ports, the installation, and the form that they lie on.
#pragma once

#include <optional>
#include <string_view>

#include "database/environment.h"
#include "wizard/form/form.h"
#include "wizard/installation_config.h"
#include "wizard/ports.h"

namespace wizard {

/// Message box styles, as the platform counts them.
namespace message_style {
inline constexpr std::uint32_t critical_system_modal = 4112;
inline constexpr std::uint32_t critical_foreground = 65552;
inline constexpr std::uint32_t yes_no_system_modal = 4100;
inline constexpr int yes = 6;
}  // namespace message_style

struct Context {
  Ports ports;
  InstallationConfig config;
  form::Form form;
  std::optional<bool> index_created;  ///< whether a patient index that was missing could be created

  /// What the database procedures need, as things stand now; not to be kept beyond the next call.
  database::Environment environment() const;

  /// Reads a value of an ini file through the 4096-character buffer; empty where there is none.
  std::string ini_value(std::string_view file, std::string_view section, std::string_view key,
                        std::string_view fallback = {}) const;
  /// A text value under the current user root, trimmed; `fallback` where it is missing or blank.
  std::string user_value(std::string_view key, std::string_view name, std::string_view fallback) const;

  /// Caption from the language component; stays as it is where there is none.
  void show_text(form::Control& control, long number) const;
  /// Shows the text under the product's name and returns the button.
  int message(long number, std::uint32_t style) const;
};

/// The text with "%1", "%2" … filled in.
std::string fill_in(std::string_view text, std::initializer_list<std::string_view> values);

/// A folder and a name in it, with one backslash between them whether or not the folder brings one.
std::string join_path(std::string_view folder, std::string_view name);

}  // namespace wizard

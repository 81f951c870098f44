// A finding: something about the choices or their surroundings that the user should know. It stops nothing and changes
// nothing. The open page shows its own findings; the last page and the report of a run without a window list all of
// them.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "wizard/installation_config.h"

namespace wizard {

struct Choices;
struct Context;
struct Page;
struct Pages;

/// A note says what will happen. A warning says that something is not stored as it was given, or is probably wrong.
enum class Severity : std::uint8_t { Note, Warning };

struct Finding {
  Severity severity = Severity::Warning;
  std::string page = {};                 ///< tag of the page that it concerns; empty: the surroundings
  std::string control = {};              ///< path of the control, "txtvorgabe(4)"; empty if it concerns none
  long text = 0;                         ///< number of the text
  std::vector<std::string> values = {};  ///< the values for the text's "%1" …
  friend bool operator==(const Finding&, const Finding&) = default;
};

using Findings = std::vector<Finding>;

/// The finding in the user's language, without a mark of its severity.
std::string finding_text(const InstallationConfig& config, const Finding& finding);

/// The same with the word for its severity before it.
std::string marked_text(const InstallationConfig& config, const Finding& finding);

/// The findings about one page. Never raises.
Findings page_findings(const Context& context, const Pages& pages, const Choices& choices, const Page& page);

/// The findings about the surroundings, then those of all pages in their order. Reads files and registry and changes
/// neither. Never raises.
Findings all_findings(const Context& context, const Pages& pages, const Choices& choices);

/// What will prevent the choices from being stored, or store them elsewhere than expected, and what to do about it.
/// Never raises.
Findings surrounding_findings(const Context& context, const Choices& choices);

}  // namespace wizard

// Something about the choices that is worth a word to the user: it stops nothing and changes nothing. The page shows it
// while it is open, the last page and the report of a run without a window list it.
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

/// A note tells what will happen, a warning that something is not stored as it was given, or is probably wrong.
enum class Severity : std::uint8_t { Note, Warning };

struct Finding {
  Severity severity = Severity::Warning;
  std::string page = {};                 ///< tag of the page that it is about; empty: the surroundings
  std::string control = {};              ///< path of the control, "txtvorgabe(4)"; empty where it is about none
  long text = 0;                         ///< number of the text
  std::vector<std::string> values = {};  ///< what the text's "%1" … stand for
  friend bool operator==(const Finding&, const Finding&) = default;
};

using Findings = std::vector<Finding>;

/// The finding in the user's language, without a mark of its severity.
std::string finding_text(const InstallationConfig& config, const Finding& finding);

/// The same behind the word for its severity.
std::string marked_text(const InstallationConfig& config, const Finding& finding);

/// What is to be said about one page. Never raises.
Findings page_findings(const Context& context, const Pages& pages, const Choices& choices, const Page& page);

/// Those of the surroundings, then those of all pages in their order. Looks at files and registry and changes neither.
/// Never raises.
Findings all_findings(const Context& context, const Pages& pages, const Choices& choices);

/// What will keep the choices from being stored, or store them elsewhere than expected, and what to do about it. Never
/// raises.
Findings surrounding_findings(const Context& context, const Choices& choices);

}  // namespace wizard

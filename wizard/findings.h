// All findings of a run, those of the pages and those of the surroundings (folders, names, files, the registry, which
// are looked at and never changed), and their texts, for whoever shows them.
#pragma once

#include "wizard/choices.h"
#include "wizard/context.h"
#include "wizard/finding.h"
#include "wizard/page.h"
#include "wizard/pages.h"

namespace wizard {

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

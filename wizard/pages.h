// The steps, and the pages that keep something of their own: what the presets fill and the finish reads.
#pragma once

#include <optional>
#include <string>

#include "wizard/chart_page.h"
#include "wizard/choices.h"
#include "wizard/insulin_page.h"
#include "wizard/scheme_page.h"
#include "wizard/step_list.h"
#include "wizard/summary_page.h"
#include "wizard/targets_page.h"

namespace wizard {

struct Pages {
  explicit Pages(Context& context)
      : targets(context), insulin(context), charts(context), scheme(context), summary(context) {}

  StepList steps;
  bool HasCurrentDB = false;   ///< a database was known at start-up; always true in the professional edition
  bool database_read = false;  ///< that database could be read, so the pages show what it holds
  std::optional<support::RuntimeError> database_failure = {};  ///< why it could not be
  StoredNow stored;                                            ///< what it held at the start
  std::string folder_at_start;                                 ///< of the patients
  bool returns_to_summary = false;  ///< the last page sent the user to another one: Next comes back from there
  TargetsPage targets;
  InsulinPage insulin;
  ChartPage charts;
  SchemePage scheme;
  SummaryPage summary;
};

}  // namespace wizard

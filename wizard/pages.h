// The steps, the pages that keep something of their own, and what was known at the start: the presets fill this, and
// the finish reads it.
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
  std::optional<support::RuntimeError> database_failure = {};  ///< why it could not be read
  StoredNow stored;                                            ///< what it held at the start
  std::string folder_at_start;                                 ///< the folder of the patients at the start
  bool returns_to_summary = false;  ///< the last page led the user to another one, and Next leads back
  TargetsPage targets;
  InsulinPage insulin;
  ChartPage charts;
  SchemePage scheme;
  SummaryPage summary;
};

}  // namespace wizard

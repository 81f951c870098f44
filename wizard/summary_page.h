// Page "Fertig": what will be written, choice by choice, in plain words, with all that is worth a word before. From
// here "Ändern" leads to the page of a choice. "Weiter" comes back from there, asking the checks of the pages in
// between without showing them; "Zurück" goes on from there page by page, as it always does.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "wizard/choices.h"
#include "wizard/context.h"
#include "wizard/finding.h"
#include "wizard/finish_report.h"

namespace wizard {

// What lines of the page have in common.

inline constexpr long nothing_chosen = 4850;  ///< text that stands where nothing is given

/// The names separated by commas, empty ones left out; the text for "nothing" where none is left.
std::string named_list(const Context& context, const std::vector<std::string>& names);

/// A line with the caption of the option that will be stored.
std::vector<std::string> option_line(const Context& context, const Choices& choices, long number,
                                     std::string_view controls);

struct Pages;

class SummaryPage {
 public:
  explicit SummaryPage(Context& context) : context_(context) {}

  /// Gathers the choices, looks at the surroundings and shows both.
  void show(const Pages& pages);
  /// Before a finish: gathers and looks again. False where there is something that was not shown: it is shown now, with
  /// the remark that it is new. That happens once after show(); then the finish is not held up any more.
  bool still_holds(const Pages& pages);

  /// After a finish that wrote everything: says so, what was written and where. What led elsewhere is gone; the button
  /// Next closes.
  void show_outcome(const FinishReport& report);

  /// What the last of the first two gathered and found.
  const Choices& choices() const noexcept { return choices_; }
  const Findings& findings() const noexcept { return findings_; }

 private:
  void look(const Pages& pages);
  void show_text(const Pages& pages, bool changed);
  void offer_pages(const Pages& pages);

  Context& context_;
  Choices choices_;
  Findings findings_;
  bool shown_again_ = false;
};

}  // namespace wizard

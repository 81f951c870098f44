// Page "Fertig": what will be written, choice by choice, in plain words, and before it all findings. "Ändern" leads to
// the page of a choice. From there, "Weiter" leads back here; it checks the pages in between without showing them.
// "Zurück" goes on from there page by page, as always.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "wizard/choices.h"
#include "wizard/context.h"
#include "wizard/finding.h"
#include "wizard/finish_report.h"

namespace wizard {

// Functions for the page's lines.

inline constexpr long nothing_chosen = 4850;  ///< the text that says that nothing is given

/// The names separated by commas, without empty ones; the text for "nothing" if none is left.
std::string named_list(const Context& context, const std::vector<std::string>& names);

/// A line with the caption of the option that will be stored; `number` is the line's text.
std::vector<std::string> option_line(const Context& context, const Choices& choices, long number,
                                     std::string_view controls);

struct Pages;

class SummaryPage {
 public:
  explicit SummaryPage(Context& context) : context_(context) {}

  /// Gathers the choices and the findings and shows both.
  void show(const Pages& pages);
  /// For the moment before a finish: gathers both again. False if there is a finding that was not shown yet: it is
  /// shown now, with the remark that it is new. This happens only once after show(); the next attempt finishes.
  bool still_holds(const Pages& pages);

  /// For a finish that wrote everything: says so, and what was written and where. The controls that led to other pages
  /// are hidden; the button Next closes the window.
  void show_outcome(const FinishReport& report);

  /// What show() or still_holds() gathered and found last.
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

// frmAssistantFirstSteps: the wizard itself. Start-up, pages, navigation and the finish, over a form that is driven by
// a window, a test or an answers file.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "wizard/finding.h"
#include "wizard/finish_report.h"
#include "wizard/form/form.h"
#include "wizard/installation_config.h"
#include "wizard/ports.h"

namespace wizard {

class frmAssistantFirstSteps {
 public:
  /// The objects that the ports point to must outlive the run.
  explicit frmAssistantFirstSteps(Ports ports);
  ~frmAssistantFirstSteps();
  frmAssistantFirstSteps(const frmAssistantFirstSteps&) = delete;
  frmAssistantFirstSteps& operator=(const frmAssistantFirstSteps&) = delete;

  /// Form Load, to be called once: discovers the installation, builds the step list, presets the controls and shows the
  /// first step. What cannot be read keeps its default. False if the program must end at once (no installation name and
  /// no command line). Neither this nor an event ever raises.
  bool load(std::string_view command_line);

  // Events, as a user's action on a control raises them. The caller sets the control's property first (value, text,
  // list index), then raises the event. Controls without a handler are ignored, and so is any event after the end of
  // the run.
  void click(std::string_view control, int index = -1);   ///< buttons, options, charts, an entry chosen from a list
  void change(std::string_view control, int index = -1);  ///< texts, scroll bars
  void focus(std::string_view control, int index = -1);   ///< any control that gets the focus
  void tick();                                            ///< Timer1
  void help();                                            ///< F1: opens the help file if it exists

  form::Form& form() noexcept;
  const InstallationConfig& config() const noexcept;

  /// Names of the pages in the order in which they are shown. A name with a "-" in it is skipped.
  const std::vector<std::string>& StepNames() const noexcept;
  /// Position of the current step in StepNames(), from 0. After the finish it is behind LastStep().
  int CurrentStep() const noexcept;
  int LastStep() const noexcept;
  /// Name of the current step; for the last one "Fertig", whatever the list calls it.
  const std::string& StepName() const noexcept;

  enum class State { Running, Finished, Cancelled };
  State state() const noexcept;
  /// What the finish wrote; empty before the finish.
  const FinishReport& report() const noexcept;
  /// The findings that the last page shows; after the end, those found right before the finish.
  const Findings& findings() const noexcept;
  /// The findings about the page that is shown, from its controls as they are now. Each one names its control.
  const Findings& page_findings() const noexcept;
  /// What the finish would write, choice by choice, without writing anything.
  FinishReport preview() const;

 private:
  struct Run;
  std::unique_ptr<Run> run_;
};

}  // namespace wizard

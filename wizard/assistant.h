// frmAssistantFirstSteps: the wizard itself. Start-up, pages, navigation and the finish, over a form that a window, a
// test or an answers file drives.
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
  /// What the ports point to must outlive the run.
  explicit frmAssistantFirstSteps(Ports ports);
  ~frmAssistantFirstSteps();
  frmAssistantFirstSteps(const frmAssistantFirstSteps&) = delete;
  frmAssistantFirstSteps& operator=(const frmAssistantFirstSteps&) = delete;

  /// Form Load, once: discovers the installation, builds the step list, presets the controls and shows the first step.
  /// What cannot be read keeps its default. False where the program must end at once (no installation name and no
  /// command line). Never raises; neither do the events.
  bool load(std::string_view command_line);

  // Events, as a user's action on a control raises them. The control's own property is set first (value, text, list
  // index), then the event is raised. Controls without a handler, and any event after the end of the run, are ignored.
  void click(std::string_view control, int index = -1);   ///< buttons, options, charts; an entry chosen from a list
  void change(std::string_view control, int index = -1);  ///< texts, scroll bars
  void focus(std::string_view control, int index = -1);   ///< whatever has got the focus
  void tick();                                            ///< Timer1
  void help();                                            ///< F1: opens the help file where it exists

  form::Form& form() noexcept;
  const InstallationConfig& config() const noexcept;

  /// Names of pages in the order of their display; one with a "-" in it is passed over.
  const std::vector<std::string>& StepNames() const noexcept;
  /// Place of the step shown in StepNames(), from 0; behind LastStep() once the run has finished.
  int CurrentStep() const noexcept;
  int LastStep() const noexcept;
  /// Name of the step shown; "Fertig" on the last one, whatever the list calls it.
  const std::string& StepName() const noexcept;

  enum class State { Running, Finished, Cancelled };
  State state() const noexcept;
  /// What the finish wrote; empty before.
  const FinishReport& report() const noexcept;
  /// What is worth a word, as the last page shows it; after the end, as it was found right before the finish.
  const Findings& findings() const noexcept;
  /// What is worth a word about the page that is shown, as the controls are now; each about the control that it names.
  const Findings& page_findings() const noexcept;
  /// What the finish would write, choice by choice, without writing anything.
  FinishReport preview() const;

 private:
  struct Run;
  std::unique_ptr<Run> run_;
};

}  // namespace wizard

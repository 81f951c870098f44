// frmAssistantFirstSteps: the wizard itself. Start-up, pages, navigation and the finish, over a form that a window, a
// test or an answers file drives.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "database/environment.h"
#include "database/patient.h"
#include "database/settings.h"
#include "support/file_system.h"
#include "support/ini.h"
#include "support/registry_funktions.h"
#include "wizard/form/form.h"
#include "wizard/installation_config.h"
#include "wizard/user_port.h"

namespace wizard {

/// Everything outside that a run touches.
struct Ports {
  support::Registry* registry = nullptr;
  support::IniFiles* ini = nullptr;
  support::FileSystem* files = nullptr;
  UserPort* user = nullptr;
  /// Creates the language component for a class name ("X.LanguageDLL"); null where it cannot be created.
  std::function<std::shared_ptr<const support::LanguageComponent>(std::string_view class_name)> create_language;
  std::function<std::unique_ptr<engine::Engine>(std::string_view identifier)> open_engine;
  std::function<engine::Date()> now;
  /// The program's own folder, a Windows path.
  std::string own_folder;
};

/// What a finish wrote or could not write, for the report at the end of a run.
struct FinishReport {
  enum class What { RegistryValue, IniKey, File, RecycledFile };
  struct Entry {
    What what;
    std::string place;  ///< key or file
    std::string name;   ///< value or key name; empty for files
    std::string value;  ///< empty for files; never the password
    bool written;
    std::string problem;  ///< empty when written
  };
  std::vector<Entry> entries;
  bool complete() const noexcept;
};

class frmAssistantFirstSteps {
 public:
  explicit frmAssistantFirstSteps(Ports ports);
  ~frmAssistantFirstSteps();
  frmAssistantFirstSteps(const frmAssistantFirstSteps&) = delete;
  frmAssistantFirstSteps& operator=(const frmAssistantFirstSteps&) = delete;

  /// Form Load: discovers the installation, builds the step list, presets the controls and shows the first step. False
  /// where the program must end at once (no installation name and no command line).
  bool load(std::string_view command_line);

  // Events, as a user's action on a control raises them. The control's own property is set first (value, text, list
  // index), then the event is raised. Unknown controls are ignored.
  void click(std::string_view control, int index = -1);
  void change(std::string_view control, int index = -1);
  void tick();  ///< Timer1

  form::Form& form() noexcept;
  const InstallationConfig& config() const noexcept;

  const std::vector<std::string>& StepNames() const noexcept;
  int CurrentStep() const noexcept;
  int LastStep() const noexcept;
  const std::string& StepName() const noexcept;  ///< page shown; "Fertig" on the last step

  enum class State { Running, Finished, Cancelled };
  State state() const noexcept;
  /// Filled by the finish.
  const FinishReport& report() const noexcept;
  /// What the finish would write, choice by choice, without writing anything.
  FinishReport preview() const;

 private:
  struct Run;
  std::unique_ptr<Run> run_;
};

}  // namespace wizard

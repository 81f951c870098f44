// Page "Schema": the therapy scheme and its description, from the scheme file in the wizard's folder.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "wizard/choices.h"
#include "wizard/context.h"

namespace wizard {

class SchemePage {
 public:
  explicit SchemePage(Context& context) : context_(context) {}

  /// Fills `cbSchema` from the file; a scheme's position in the file is its identifier. Selects the scheme that the
  /// registry names. Without the file the list stays empty.
  void fill();
  /// Shows the description of the selected scheme (`cbSchema` Click); nothing if none is selected.
  void show_description();
  /// The selected scheme; nothing if none is selected.
  std::optional<SchemeChoice> choice() const;

 private:
  std::string file() const { return context_.config.own_folder + "schemes.txt"; }

  Context& context_;
  std::vector<std::string> names_;
  std::optional<double> stored_;  ///< the identifier in the registry at start-up; nothing if the value is no number
};

}  // namespace wizard

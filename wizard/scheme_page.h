// Page "Schema": the therapy scheme and its description, from the scheme file beside the program.
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

  /// Fills `cbSchema` from the file, each scheme's place in it being its identifier, and selects the one that the
  /// registry names. Without the file the list stays empty.
  void fill();
  /// Shows the description of the selected scheme (`cbSchema` Click); nothing where none is selected.
  void show_description();
  /// The selected scheme; nothing where none is.
  std::optional<SchemeChoice> choice() const;

 private:
  std::string file() const { return context_.config.own_folder + "schemes.txt"; }

  Context& context_;
  std::vector<std::string> names_;
  std::optional<double> stored_;  ///< the identifier in the registry at start-up; nothing where it is none
};

}  // namespace wizard

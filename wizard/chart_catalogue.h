// The charts that can be chosen for the diary's home page: entries of section "CHARTS" in the wizard's "pelmar.ini",
// and pictures in its folder "pics". An entry's name is the chart's key.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "wizard/context.h"

namespace wizard {

class ChartCatalogue {
 public:
  /// Reads through the context each time it is asked; the context must outlive it.
  explicit ChartCatalogue(const Context& context) : context_(context) {}

  /// In the order of the file; empty where it is missing.
  std::vector<std::string> keys() const;

  struct Texts {
    std::string title, description;
  };
  /// Each is empty where the entry names no text for it.
  Texts texts(std::string_view key) const;

  /// Path of the small picture, and of the one in full size, whether or not there is such a file; empty for a key that
  /// would lead out of the folder.
  std::string thumbnail(std::string_view key) const { return picture_file("thmb_ss_", key); }
  std::string screenshot(std::string_view key) const { return picture_file("ss_", key); }

 private:
  std::string file() const { return context_.config.own_folder + "pelmar.ini"; }
  std::string picture_file(std::string_view prefix, std::string_view key) const;

  const Context& context_;
};

}  // namespace wizard

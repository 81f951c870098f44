#include "wizard/finish_outcome.h"

#include <algorithm>
#include <vector>

#include "wizard/finish_problems.h"

namespace wizard {

namespace {

constexpr long settings = 6012, recycled = 6013;

/// A place and what was written there, in the report's order.
struct WrittenPlace {
  std::string place;
  std::vector<std::string> names;
};

void add_name(std::vector<WrittenPlace>& places, const std::string& place, const std::string& name) {
  auto at = std::ranges::find(places, place, &WrittenPlace::place);
  if (at == places.end()) at = places.insert(at, {place, {}});
  if (std::ranges::find(at->names, name) == at->names.end()) at->names.push_back(name);
}

/// Single settings mean nothing to a user.
std::string name_in_outcome(const InstallationConfig& config, const FinishReport::Entry& entry) {
  if (entry.what == FinishReport::What::RegistryValue) return config.text(settings);
  if (entry.what == FinishReport::What::RecycledFile) return config.text(recycled);
  return name_of_entry(config, entry);
}

}  // namespace

std::string written_text(const InstallationConfig& config, const FinishReport& report) {
  std::vector<WrittenPlace> places;
  for (const FinishReport::Entry& entry : report.entries)
    if (entry.written) add_name(places, entry.place, name_in_outcome(config, entry));
  std::string text;
  const WrittenPlace* before = nullptr;
  for (const WrittenPlace& place : places) {
    if (!before || before->names != place.names)
      for (const std::string& name : place.names) text += name + "\r\n";
    before = &place;
    text += "    " + place.place + "\r\n";
  }
  return text;
}

}  // namespace wizard

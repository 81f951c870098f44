#include "database/default_medication.h"

#include <fmt/core.h>

#include <span>

#include "database/columns.h"
#include "database/open_database.h"
#include "database/therapy_plan.h"
#include "support/text.h"
#include "support/windows_path.h"

namespace database {
namespace {

/// One kind of insulin, with the sources that are asked after the newest plan. Its place in the table is its item type.
struct InsulinKind {
  std::string DefaultInsulin::*text;
  std::string_view default_field;
  std::string_view diary_query;
  long fallback_text;
};

constexpr InsulinKind insulin_kinds[] = {
    {&DefaultInsulin::bolus, "DefaultBolus",
     "SELECT * FROM INSULIN where bolusie >0 and basalie<=0 and rapid=0 and desc <>'' order by vdate, vtime DESC",
     4353},
    {&DefaultInsulin::basal, "DefaultBasal",
     "SELECT * FROM INSULIN where bolusie <=0 and basalie>0 and rapid=0 and desc <>''  order by vdate, vtime DESC",
     4354},
    {&DefaultInsulin::mix, "DefaultMix",
     "SELECT * FROM INSULIN where bolusie >0 and basalie >0 and rapid=0 and desc <>''  order by vdate, vtime DESC",
     4356},
    {&DefaultInsulin::rapid, "DefaultRapid",
     "SELECT * FROM INSULIN where bolusie >0 and basalie<=0 and rapid<>0 and desc <>''  order by vdate, vtime DESC",
     4355},
};

constexpr std::string_view drug_fields[] = {"DefaultOAD1", "DefaultOAD2", "DefaultOAD3"};

/// A source's answer may be missing or Null. If it is empty after trimming, the next source is asked.
bool is_missing(const std::string& text) { return support::trim(text).empty(); }

/// The path with each doubled backslash reduced to one.
Target without_doubled_slashes(const Target& target) {
  if (target.open()) return target;
  std::string path = target.path();
  support::RemoveSlashes(path);
  return path;
}

/// Passes the text of each item of the newest plan to the place that its type stands for, counted from `first`.
void take_from_newest_plan(support::Procedure& procedure, const OpenedTarget& opened, std::int16_t first,
                           std::int16_t last, std::span<std::string* const> places) {
  std::int32_t plan_id = 0;
  const auto plan = try_open_row(procedure, opened, "SELECT * from therapieplan ORDER by vdate DESC");
  if (!plan || !procedure.step([&] { plan_id = engine::to_int32(plan->value("id")); })) return;
  const auto items =
      try_open_row(procedure, opened,
                   fmt::format("SELECT * from therapieplan_details WHERE lID= {} AND itemtype BETWEEN {} and {}",
                               plan_id, first, last));
  for (bool more = items != nullptr; more; more = next_row(procedure, *items)) {
    procedure.step([&] {
      const int place = engine::to_int16(items->value("itemtype")) - first;
      if (place < 0 || static_cast<std::size_t>(place) >= places.size()) return;
      *places[static_cast<std::size_t>(place)] = engine::to_text(items->value("desc"));
    });
  }
}

void take_from_defaults(support::Procedure& procedure, const OpenedTarget& opened, DefaultInsulin& insulin) {
  const auto defaults = try_open_row(procedure, opened, "SELECT * FROM DEFAULTINSULIN");
  if (!defaults) return;
  for (const InsulinKind& kind : insulin_kinds) {
    std::string& text = insulin.*kind.text;
    if (!is_missing(text)) continue;
    procedure.step([&] { text = engine::to_text(defaults->value(kind.default_field)); });
    if (kind.text != &DefaultInsulin::mix || is_missing(text)) continue;
    procedure.step([&] { insulin.bolus_percentage = engine::to_int16(defaults->value("BolusPercentage")); });
  }
}

void take_from_diary(support::Procedure& procedure, const OpenedTarget& opened, const InsulinKind& kind,
                     DefaultInsulin& insulin) {
  const auto entry = try_open_row(procedure, opened, kind.diary_query);
  if (!entry) return;
  procedure.step([&] {
    const double bolus = engine::to_double(entry->value("bolusie"));
    const double basal = engine::to_double(entry->value("basalie"));
    const bool rapid = engine::to_bool(entry->value("rapid"));
    insulin.*kind.text = insulin_text(engine::to_text(entry->value("desc")), bolus, basal, rapid ? -1 : 0);
    if (kind.text == &DefaultInsulin::mix) insulin.bolus_percentage = engine::to_int16(100 * bolus / (bolus + basal));
  });
}

void take_from_language(const Environment& environment, const InsulinKind& kind, DefaultInsulin& insulin) {
  std::string& text = insulin.*kind.text;
  text = environment.text(kind.fallback_text);
  support::replace(text, ":", "");
  if (kind.text != &DefaultInsulin::mix) return;
  text += " 50/50";
  insulin.bolus_percentage = 50;
}

}  // namespace

bool db_GetDefaultInsulin(const Environment& environment, const Target& target, DefaultInsulin& insulin) {
  support::Procedure procedure{"sql!db_GetDefaultInsulin"};
  const OpenedTarget opened{environment, without_doubled_slashes(target), OpenedTarget::Access::Read};
  if (!opened.get()) return false;
  insulin = {};
  std::string* const places[] = {&insulin.bolus, &insulin.basal, &insulin.mix, &insulin.rapid};
  take_from_newest_plan(procedure, opened, plan_item::bolus, plan_item::pump, places);
  take_from_defaults(procedure, opened, insulin);
  for (const InsulinKind& kind : insulin_kinds) {
    std::string& text = insulin.*kind.text;
    if (is_missing(text)) take_from_diary(procedure, opened, kind, insulin);
    if (is_missing(text)) take_from_language(environment, kind, insulin);
    text = support::trim(text);
  }
  return true;
}

bool db_GetDefaultOAD(const Environment& environment, const Target& target, std::array<std::string, 3>& drugs) {
  support::Procedure procedure{"sql!db_GetDefaultOAD"};
  const OpenedTarget opened{environment, without_doubled_slashes(target), OpenedTarget::Access::Read};
  if (!opened.get()) return false;
  drugs = {};
  std::string* const places[] = {&drugs[0], &drugs[1], &drugs[2]};
  take_from_newest_plan(procedure, opened, plan_item::drug_first, plan_item::drug_last, places);
  const auto defaults = try_open_row(procedure, opened, "SELECT * FROM DEFAULTOAD");
  for (std::size_t i = 0; i < drugs.size(); ++i) {
    if (defaults && is_missing(drugs[i])) {
      procedure.step([&] { drugs[i] = engine::to_text(defaults->value(drug_fields[i])); });
    }
    drugs[i] = support::trim(drugs[i]);
  }
  return true;
}

}  // namespace database

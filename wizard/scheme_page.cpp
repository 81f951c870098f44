#include "wizard/scheme_page.h"

#include "support/ini.h"
#include "support/text.h"
#include "support/user_locale.h"
#include "wizard/form/form.h"
#include "wizard/page_grid.h"
#include "wizard/page_list.h"
#include "wizard/pages.h"
#include "wizard/summary_page.h"

namespace wizard {

void SchemePage::fill() {
  names_.clear();
  support::GetSchemes(*context_.ports.ini, *context_.ports.files, file(), names_);
  std::vector<form::ListItem> items;
  for (const std::string& name : names_) {
    const std::string description = support::trim(context_.ini_value(file(), name, "Desc"));
    items.push_back({description.empty() ? name : description, static_cast<std::int32_t>(items.size())});
  }
  form::Control& box = context_.form.at("cbSchema");
  box.set_items(std::move(items));
  const std::string stored = context_.user_value(context_.config.RegKey, "Scheme", "0");
  form::MatchList(box, stored);
  // "03" means 3. A name is no number; it means the scheme that it selects.
  stored_ = support::parse_number(stored);
  if (!stored_ && box.list_index() >= 0) stored_ = box.selected_item_data();
  show_description();
}

void SchemePage::show_description() {
  constexpr std::size_t buffer_size = 513;
  form::Control& description = context_.form.at("lblSchemaDesc");
  description.set_caption("");
  const form::Control& box = context_.form.at("cbSchema");
  const auto scheme = static_cast<std::size_t>(box.selected_item_data());
  if (box.list_index() < 0 || scheme >= names_.size()) return;
  std::string text = context_.ports.ini->value(file(), names_[scheme], "LongDesc", "", buffer_size);
  text = support::trim(text.substr(0, text.find('\0')));
  support::replace(text, "\\n", "\r\n");
  description.set_caption(text);
}

std::optional<SchemeChoice> SchemePage::choice() const {
  const form::Control& box = context_.form.at("cbSchema");
  if (box.list_index() < 0) return std::nullopt;
  return SchemeChoice{box.selected_item_data(), box.text(), stored_ != box.selected_item_data()};
}

namespace {

using enum form::Kind;

// One control, one line.
// clang-format off
constexpr form::ControlRow scheme_controls[] = {
    grid::heading("Therapieschema", "L4712"),
    grid::purpose("Nach welchem Schema behandeln Sie Ihren Diabetes?", "L4732"),
    {"lblSchema", -1, Label, "", grid::label(0), "&Schema:", "L4787"},
    {"cbSchema", -1, ComboBox, "", grid::field(0)},
    {"lblSchemaDesc", -1, Label, "", {1920, 2040, 4560, 3240}},
};
// clang-format on

void preset_scheme(Context&, Pages& pages, const Stored&) { pages.scheme.fill(); }
void choose_scheme(Context&, Pages& pages, int) { pages.scheme.show_description(); }

void gather_scheme(const Context&, const Pages& pages, Choices& choices) { choices.scheme = pages.scheme.choice(); }

std::vector<std::string> sum_up_scheme(const Context& context, const Choices& choices) {
  return {context.config.text(4844, {named_list(context, {choices.scheme ? choices.scheme->name : ""})})};
}

constexpr PageEvent scheme_clicks[] = {{"cbSchema", choose_scheme}};

}  // namespace

constinit const Page scheme_page{.tag = "Schema",
                                 .controls = scheme_controls,
                                 .illustration = Illustration::Therapy,
                                 .clicks = scheme_clicks,
                                 .preset = preset_scheme,
                                 .gather = gather_scheme,
                                 .summary = sum_up_scheme};

}  // namespace wizard

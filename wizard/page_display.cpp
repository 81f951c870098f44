#include "wizard/page_display.h"

#include <algorithm>
#include <string>

#include "support/encoding.h"
#include "wizard/option_groups.h"

namespace wizard {

namespace {

struct Illustration {
  std::string_view page;
  std::string_view resource;
};

constexpr Illustration illustrations[] = {
    {"INSULIN", "101"},     {"MEDIKAMENTE", "102"}, {"MAßEINHEIT", "104"}, {"THERAPIE_BZ", "103"},
    {"THERAPIE_BP", "103"}, {"DARSTELLUNG", "103"}, {"EINGABE", "103"},    {"SCHEMA", "103"},
};
constexpr std::string_view any_other_illustration = "105";

/// Null where no page is shown.
form::Control* page_shown(form::Form& form) {
  const auto pages = form.array("contstep");
  const auto shown = std::ranges::find_if(pages, &form::Control::visible);
  return shown == pages.end() ? nullptr : *shown;
}

}  // namespace

void show_page(form::Form& form, std::string_view step) {
  std::string name(step);
  std::erase(name, '-');
  for (form::Control* page : form.array("contstep")) page->set_visible(support::equal_ignoring_case(page->tag(), name));
}

void show_illustration(form::Form& form) {
  const form::Control* page = page_shown(form);
  const std::string tag = page ? support::to_upper(page->tag()) : std::string();
  const auto match = std::ranges::find(illustrations, tag, &Illustration::page);
  form.at("Image1").set_picture(match == std::end(illustrations) ? any_other_illustration : match->resource);
}

void show_style_preview(form::Form& form) {
  form.at("imgDisplayStyle").set_picture(chosen_option(form, "optDisplayStyle") == 1 ? "style1" : "style0");
}

}  // namespace wizard

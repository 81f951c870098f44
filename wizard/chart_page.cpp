#include "wizard/chart_page.h"

#include <fmt/core.h>

#include <algorithm>
#include <array>
#include <charconv>

#include "support/encoding.h"
#include "support/text.h"
#include "support/user_locale.h"
#include "support/windows_path.h"
#include "wizard/form_layout.h"
#include "wizard/home_page.h"
#include "wizard/page_grid.h"
#include "wizard/page_list.h"
#include "wizard/pages.h"
#include "wizard/summary_page.h"

namespace wizard {
namespace {

constexpr std::int32_t column_gap = 10;

}  // namespace

void ChartPage::prepare(int limit) {
  limit_ = limit;
  show_count();
}

void ChartPage::build() {
  if (built_) return;
  built_ = true;
  size_thumbnails();
  const std::vector<std::string> keys = catalogue_.keys();
  const std::vector<ChartCatalogue::Texts> texts = catalogue_.texts(keys);
  for (std::size_t n = 0; n < keys.size(); ++n) add_option(static_cast<int>(n), keys[n], texts[n].title);
  tick_home_page_charts();
  size_slide(static_cast<std::int32_t>(keys.size()));
  form::Form& form = context_.form;
  form.at("lblChartInfoTitle").set_caption("");
  form.at("lblChartInfoTitle").set_tag("");
  form.at("lblChartInfo").set_caption("");
  form.at("cmdViwPic").set_enabled(false);
  show_count();
}

std::int32_t ChartPage::slide_width() const {
  return context_.form.at("picFrame").bounds().width - context_.form.at("vsbSlide").bounds().width;
}

void ChartPage::size_thumbnails() {
  const double room = slide_width() - (charts_in_row - 1) * column_gap;
  thumbnail_width_ = static_cast<std::int32_t>(support::round_half_even(room / charts_in_row));
  thumbnail_height_ = static_cast<std::int32_t>(support::round_half_even(thumbnail_width_ * 0.66));
}

/// The slide is as high as all rows together. The scroll bar moves it by as much as it is higher than its frame.
void ChartPage::size_slide(std::int32_t charts) {
  const std::int32_t rows = (charts + charts_in_row - 1) / charts_in_row;
  const std::int32_t height = rows * (thumbnail_height_ + chart_title_height + chart_row_gap);
  const std::int32_t visible = context_.form.at("picFrame").bounds().height;
  context_.form.at("picSlide").set_bounds({0, 0, slide_width(), std::max(height, visible)});
  form::Control& bar = context_.form.at("vsbSlide");
  bar.set_maximum(std::max(height - visible, 0));
  bar.set_enabled(height > visible);
}

void ChartPage::add_option(int position, std::string_view key, std::string title) {
  form::Form& form = context_.form;
  const std::int32_t column = position % charts_in_row, row = position / charts_in_row;
  const form::Bounds bounds{column * (thumbnail_width_ + column_gap),
                            row * (thumbnail_height_ + chart_title_height + chart_row_gap), thumbnail_width_,
                            thumbnail_height_};
  form::Control& first = form.at("optThumb", 0);
  form::Control& option =
      position == 0 ? first
                    : form.add({"optThumb", position, form::Kind::ChartOption, "picSlide", bounds, "", "", false});
  option.set_bounds(bounds);
  option.set_font(first.font());
  const std::string thumbnail = catalogue_.thumbnail(key);
  if (support::file_test(*context_.ports.files, thumbnail)) option.set_picture(thumbnail);
  option.set_tag(key);
  support::replace(title, "&", "");
  option.set_tooltip(title);
  option.set_caption(fitting_caption(std::move(title), bounds.width - 15));
  option.set_visible(true);
}

std::string ChartPage::fitting_caption(std::string title, std::int32_t width) const {
  const std::string& font = context_.form.at("picSlide").font();
  const auto measure = [&](std::string_view text) { return context_.ports.user->text_width(text, font); };
  if (measure(title) <= width) return title;
  const std::int32_t room = width - measure("...");
  while (!title.empty() && measure(title) > room)
    title = support::first_characters(title, support::character_count(title) - 1);
  return title + "...";
}

void ChartPage::tick_home_page_charts() {
  const std::string file = context_.config.own_folder + "home.ini";
  const std::string section = home_page_section(context_, file);
  std::vector<std::string> entries;
  for (int slot = 1; slot <= home_page_slots; ++slot) entries.push_back(slot_entry(slot));
  for (const std::string& entry : support::ReadIniValues(*context_.ports.ini, file, section, entries)) {
    const std::string chart = chart_in_slot(entry);
    if (chart.empty()) continue;
    for (form::Control* option : context_.form.array("optThumb")) {
      if (!support::equal_ignoring_case(option->tag(), chart)) continue;
      option->set_value(1);
      break;
    }
  }
}

std::vector<const form::Control*> ChartPage::options() const {
  std::vector<const form::Control*> found;
  for (const form::Control* option : context_.form.array("optThumb"))
    if (!option->tag().empty()) found.push_back(option);
  return found;
}

std::vector<const form::Control*> ChartPage::chosen() const {
  auto found = options();
  std::erase_if(found, [](const form::Control* option) { return option->value() == 0; });
  return found;
}

void ChartPage::show_count() {
  const int count = std::min(static_cast<int>(chosen().size()), limit_);
  context_.form.at("lblPics").set_caption(fmt::format("{}/{}", count, limit_));
}

void ChartPage::describe(int index) {
  form::Form& form = context_.form;
  const form::Control& option = form.at("optThumb", index);
  const std::string key = option.tag();
  const ChartCatalogue::Texts texts = catalogue_.texts(std::array{key}).front();
  form.at("lblChartInfoTitle").set_caption(texts.title);
  form.at("lblChartInfo").set_caption(texts.description);
  form.at("lblChartInfoTitle").set_tag(key);
  form.at("cmdViwPic").set_enabled(support::file_test(*context_.ports.files, catalogue_.screenshot(key)));
}

/// A chart beyond the limit is unticked again, and the page says so until the next click.
void ChartPage::click(int index) {
  constexpr long too_many = 4942;
  describe(index);
  const bool refused = static_cast<int>(chosen().size()) > limit_;
  if (refused) context_.form.at("optThumb", index).set_value(0);
  show_count();
  context_.form.at("lblChartLimit")
      .set_caption(refused ? context_.config.text(too_many, {std::to_string(limit_)}) : std::string());
}

void ChartPage::scroll() {
  form::Control& slide = context_.form.at("picSlide");
  form::Bounds bounds = slide.bounds();
  bounds.top = -context_.form.at("vsbSlide").value();
  slide.set_bounds(bounds);
  context_.form.request_redraw(context_.form.at("picFrame"));
}

void ChartPage::open_screenshot() {
  const std::string file = catalogue_.screenshot(context_.form.at("lblChartInfoTitle").tag());
  if (!file.empty()) context_.ports.user->open_file(file);
}

namespace {

using enum form::Kind;

constexpr int chart_limit = 4;

// `picLoad` and `picThumb` are the buffers in which a thumbnail is loaded and scaled; they are never shown.
constexpr form::ControlRow chart_controls[] = {
    grid::heading("Diagramme der Startseite", "L4709"),
    grid::purpose("Wählen Sie bis zu vier Diagramme für Ihre Startseite.", "L4729"),
    {"picFrame", -1, PictureBox, "", {120, 1440, 6360, 2580}, "Verfügbare Diagramme", "L4775"},
    {"picSlide", -1, PictureBox, "picFrame", {0, 0, 6090, 2580}, "Verfügbare Diagramme", "L4775"},
    {"optThumb", 0, ChartOption, "picSlide", {0, 0, 2025, 1335}, "", "", false},
    {"vsbSlide", -1, ScrollBar, "picFrame", {6090, 0, 270, 2580}, "Weitere Diagramme", "L4817"},
    {"picLoad", -1, PictureBox, "", {0, 0, 15, 15}, "", "", false},
    {"picThumb", -1, PictureBox, "", {0, 0, 15, 15}, "", "", false},
    {"lblChartInfoTitle", -1, Label, "", {120, 4140, 4080, 300}},
    {"lblChartInfo", -1, Label, "", {120, 4440, 4080, 540}},
    {"lblPicsTitle", -1, Label, "", {4320, 4140, 1560, 300}, "Gewählt:", "L4776"},
    {"lblPics", -1, Label, "", {5940, 4140, 540, 300}, "0/4"},
    {"lblChartLimit", -1, Label, "", {120, 5040, 6360, 420}},
    {"cmdViwPic", -1, Button, "", {4320, 4500, 2160, 480}, "Bild &vergrößern", "L4774"},
};
// clang-format on

constexpr BesideRow chart_column[] = {{"lblPicsTitle", "lblPics"},
                                      {"lblChartLimit", ""},
                                      {"lblChartInfoTitle", ""},
                                      {"lblChartInfo", ""},
                                      {"", "cmdViwPic"}};

void preset_charts(Context&, Pages& pages, const Stored&) { pages.charts.prepare(chart_limit); }

/// Marks the step when its page has been built. A step that was configured with a "-" is skipped and never gets here.
void enter_charts(Context&, Pages& pages) {
  StepList& steps = pages.steps;
  if (!support::equal_ignoring_case(steps.name_at(steps.current()), chart_page.tag)) return;
  pages.charts.build();
  steps.mark_built(steps.current());
}

void gather_charts(const Context&, const Pages& pages, Choices& choices) {
  for (const form::Control* option : pages.charts.options())
    choices.charts.push_back({option->tag(), option->tooltip(), option->value() != 0});
}

std::vector<std::string> sum_up_charts(const Context& context, const Choices& choices) {
  std::vector<std::string> titles;
  for (const ChartChoice& chart : choices.charts)
    if (chart.chosen) titles.push_back(chart.title.empty() ? chart.key : chart.title);
  return {context.config.text(4841, {named_list(context, titles)})};
}

void describe_chart(Context&, Pages& pages, int option) { pages.charts.describe(option); }
void choose_chart(Context&, Pages& pages, int option) { pages.charts.click(option); }
void view_chart(Context&, Pages& pages, int) { pages.charts.open_screenshot(); }
void scroll_charts(Context&, Pages& pages, int) { pages.charts.scroll(); }

constexpr PageEvent chart_clicks[] = {{"optThumb", choose_chart}, {"cmdViwPic", view_chart}};
constexpr PageEvent chart_focuses[] = {{"optThumb", describe_chart}};
constexpr PageEvent chart_changes[] = {{"vsbSlide", scroll_charts}};

}  // namespace

constinit const Page chart_page{.tag = "Pics",
                                .step = "pics",
                                .shown_in = Edition::Both,
                                .controls = chart_controls,
                                .beside = chart_column,
                                .clicks = chart_clicks,
                                .changes = chart_changes,
                                .focuses = chart_focuses,
                                .preset = preset_charts,
                                .enter = enter_charts,
                                .gather = gather_charts,
                                .summary = sum_up_charts};

namespace {

constexpr std::string_view catalogue_section = "CHARTS";

long text_number(const std::vector<std::string>& fields, std::size_t field) {
  long number = -1;
  if (field < fields.size()) {
    const std::string text = support::trim(fields[field]);
    std::from_chars(text.data(), text.data() + text.size(), number);
  }
  return number;
}

}  // namespace

std::vector<std::string> ChartCatalogue::keys() const {
  std::vector<std::string> keys;
  support::Split(support::ReadIni(*context_.ports.ini, *context_.ports.registry, context_.config.RegKey,
                                  {.section = catalogue_section, .key = "KEYS", .file = file(), .delimiter = "|"}),
                 keys, "|");
  return keys;
}

std::vector<ChartCatalogue::Texts> ChartCatalogue::texts(std::span<const std::string> keys) const {
  std::vector<Texts> texts;
  for (const std::string& entry : support::ReadIniValues(*context_.ports.ini, file(), catalogue_section, keys)) {
    std::vector<std::string> fields;
    support::Split(entry, fields, "^");
    const auto text = [&](std::size_t field) {
      const long number = text_number(fields, field);
      return number < 0 ? std::string() : context_.config.text(number);
    };
    texts.push_back({text(0), text(1)});
  }
  return texts;
}

std::string ChartCatalogue::picture_file(std::string_view prefix, std::string_view key) const {
  if (key.find_first_of("\\/:") != std::string_view::npos) return {};
  return support::join_path(support::join_path(context_.config.own_folder, "pics"),
                            std::string(prefix) + std::string(key) + ".jpg");
}

}  // namespace wizard

// Page "Pics": the charts of the diary's home page, laid out from the catalogue when the page is first shown.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "wizard/chart_catalogue.h"
#include "wizard/context.h"

namespace wizard {

class ChartPage {
 public:
  explicit ChartPage(Context& context) : context_(context), catalogue_(context) {}

  /// Sets how many charts may be chosen.
  void prepare(int limit);
  /// Makes an option for each chart, once, and ticks those that the home page holds already, be they more than may be
  /// chosen.
  void build();

  /// `optThumb` Click, after the option has its new value: shows what the chart is. One that is ticked beyond the limit
  /// is unticked.
  void click(int option);
  /// Shows what the chart is.
  void describe(int option);
  void scroll();           ///< `vsbSlide` Change
  void open_screenshot();  ///< `cmdViwPic` Click: the chart last clicked

  /// Options of the catalogue's charts, in its order; empty before the page is built.
  std::vector<const form::Control*> options() const;
  /// Those of them that are ticked.
  std::vector<const form::Control*> chosen() const;

 private:
  std::int32_t slide_width() const;
  void size_thumbnails();
  void size_slide(std::int32_t charts);
  void add_option(int position, std::string_view key);
  std::string fitting_caption(std::string title, std::int32_t width) const;
  void tick_home_page_charts();
  void show_count();

  Context& context_;
  ChartCatalogue catalogue_;
  int limit_ = 0;
  bool built_ = false;
  std::int32_t thumbnail_width_ = 0, thumbnail_height_ = 0;  ///< twips
};

}  // namespace wizard

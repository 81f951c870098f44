// Page "Pics": the charts of the diary's home page, built from the chart catalogue when it is first shown.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "wizard/context.h"

namespace wizard {

/// Entries "CHART1" to "CHART5" of the home page; field 2 of an entry is its chart's key.
inline constexpr int home_page_slots = 5;
inline constexpr std::size_t chart_key_field = 2;

class ChartPage {
 public:
  explicit ChartPage(Context& context) : context_(context) {}

  /// Sets how many charts may be chosen.
  void prepare(int limit);
  /// Builds the options, once, and ticks those that the home page holds.
  void build();
  bool built() const noexcept { return built_; }

  void click(int option);  ///< `optThumb`: at most the limit stays ticked
  void scroll();           ///< `vsbSlide` Change
  void open_screenshot();  ///< `cmdViwPic`

  /// Options of the catalogue's charts, in its order; empty before the page is built.
  std::vector<const form::Control*> options() const;
  /// Those of them that are ticked.
  std::vector<const form::Control*> chosen() const;

 private:
  struct Texts {
    std::string title, description;
  };
  Texts texts_of(std::string_view key) const;
  /// Empty for a key that would lead out of the pictures' folder.
  std::string picture_file(std::string_view prefix, std::string_view key) const;
  std::vector<std::string> catalogue_keys() const;
  std::int32_t slide_width() const;
  void size_thumbnails();
  void size_slide(std::int32_t charts);
  void add_option(int position, std::string_view key);
  std::string fitting_caption(std::string title, std::int32_t width) const;
  void tick_home_page_charts();
  void show_count();

  Context& context_;
  int limit_ = 0;
  bool built_ = false;
  std::int32_t thumbnail_width_ = 0, thumbnail_height_ = 0;  ///< twips
};

}  // namespace wizard

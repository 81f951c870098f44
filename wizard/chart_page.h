// Page "Pics": the charts of the diary's home page, laid out when the page is first shown. The catalogue of charts is
// section "CHARTS" of the wizard's "pelmar.ini", with pictures in its folder "pics"; the name of an entry is the
// chart's key.
#pragma once

#include <cstdint>
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

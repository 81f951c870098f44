// Page "Pics": the charts of the diary's home page; they are laid out when the page is first shown. The catalogue of
// charts is the section "CHARTS" of the wizard's "pelmar.ini", its pictures are in the folder "pics", and the name of
// an entry is the chart's key.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "wizard/context.h"

namespace wizard {

class ChartCatalogue {
 public:
  /// Reads through the context at each call; the context must outlive this object.
  explicit ChartCatalogue(const Context& context) : context_(context) {}

  /// The keys in the order of the file; empty if the file is missing.
  std::vector<std::string> keys() const;

  struct Texts {
    std::string title, description;
  };
  /// Of each key. A text is empty if the entry does not name it.
  std::vector<Texts> texts(std::span<const std::string> keys) const;

  /// Paths of the small picture and of the one in full size, whether or not such a file exists. Empty for a key that
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
  /// Makes an option for each chart, once, and ticks the charts that are on the home page already, even if they are
  /// more than the limit.
  void build();

  /// `optThumb` Click, after the option has its new value: describes the chart. A chart that is ticked beyond the limit
  /// is unticked.
  void click(int option);
  /// Shows what the chart is.
  void describe(int option);
  void scroll();           ///< `vsbSlide` Change
  void open_screenshot();  ///< `cmdViwPic` Click: opens the picture of the chart that was clicked last

  /// The options of the catalogue's charts, in its order; empty before the page is built.
  std::vector<const form::Control*> options() const;
  /// The ticked ones among them.
  std::vector<const form::Control*> chosen() const;

 private:
  std::int32_t slide_width() const;
  void size_thumbnails();
  void size_slide(std::int32_t charts);
  void add_option(int position, std::string_view key, std::string title);
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

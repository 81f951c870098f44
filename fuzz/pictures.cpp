// Any bytes as the chart catalogue and the home page: every picture that the page looks for or opens is a ".jpg" in the
// folder "pics", and the page accepts any click.
#include <algorithm>

#include "fuzz/target.h"
#include "support/encoding.h"
#include "support/hive_registry.h"
#include "support/host.h"
#include "wizard/chart_page.h"
#include "wizard/form_layout.h"
#include "wizard/home_page.h"

namespace {

constexpr int chart_limit = 4;
/// The clicks for one input. There are few, because each click looks at every option.
constexpr int most_clicks = 4;

const fuzz::ScratchFolder& scratch() {
  static const fuzz::ScratchFolder folder;
  return folder;
}

const std::string& installation() {
  static const std::string folder = support::host_file_system().windows_path(scratch().path().string()) + "\\";
  return folder;
}

void check_picture(std::string_view path) {
  const std::string folder = installation() + "pics\\";
  fuzz::promise(path.starts_with(folder), "a picture lies in its folder");
  const std::string_view name = path.substr(folder.size());
  fuzz::promise(name.starts_with("ss_") || name.starts_with("thmb_ss_"), "a picture has its prefix");
  fuzz::promise(name.ends_with(".jpg"), "a picture has its ending");
  fuzz::promise(name.find_first_of("\\/:") == std::string_view::npos, "a picture's name leads nowhere else");
  const std::string host = support::host_file_system().host_path(path);
  fuzz::promise(host.find('\0') == std::string::npos, "a path of the host holds no NUL");
}

/// Files in which every picture exists.
class Pictures : public support::FileSystem {
 public:
  std::optional<std::uint64_t> file_size(std::string_view path) const override {
    if (path.empty()) return std::nullopt;
    check_picture(path);
    return 1;
  }
  bool folder_exists(std::string_view) const override { return false; }
  bool create_folder(std::string_view) override { return false; }
  std::vector<std::string> files(std::string_view, std::string_view) const override { return {}; }
  std::optional<std::string> read(std::string_view, std::uint64_t) const override { return std::nullopt; }
  bool rename_without_replacing(std::string_view, std::string_view) override { return false; }
  bool remove(std::string_view) override { return false; }
  bool can_create_in(std::string_view) const override { return true; }
  bool can_write(std::string_view) const override { return true; }
  std::optional<std::uint64_t> free_space(std::string_view) const override { return std::nullopt; }
  std::string host_path(std::string_view path) const override { return std::string(path); }
  std::string windows_path(std::string_view path) const override { return std::string(path); }
};

class User : public wizard::UserPort {
 public:
  int message_box(std::string_view, std::uint32_t, std::string_view) override { return 1; }
  std::optional<std::string> choose_folder(std::string_view) override { return std::nullopt; }
  bool open_file(std::string_view path) override {
    check_picture(path);
    return true;
  }
  std::vector<std::string> recycle(std::string_view, std::string_view) override { return {}; }
  bool is_network_path(std::string_view) override { return false; }
  std::int32_t text_width(std::string_view text, std::string_view) override {
    return static_cast<std::int32_t>(support::character_count(text)) * 100;
  }
  void set_topmost(bool) override {}
};

/// Texts that consist of their number and more text than a caption has room for.
class Texts : public support::LanguageComponent {
 public:
  std::string loadres(long number) const override { return "&Titel eines Bildes für " + std::to_string(number); }
};

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const auto registry = support::open_hive((scratch().path() / "registry.reg").string());
  const std::string_view bytes = fuzz::text_of(data, size);
  scratch().write("pelmar.ini", bytes);
  scratch().write("home.ini", bytes);
  Pictures pictures;
  User user;
  wizard::Context context;
  context.ports.registry = registry.get();
  context.ports.ini = &support::host_ini_files();
  context.ports.files = &pictures;
  context.ports.user = &user;
  context.config.own_folder = installation();
  context.config.LanguageObject = std::make_shared<Texts>();
  wizard::build_form(context.form);

  wizard::ChartPage page(context);
  page.prepare(chart_limit);
  page.build();
  int clicks = 0;
  for (const form::Control* option : page.options()) {
    if (++clicks > most_clicks) break;
    context.form.at("optThumb", option->index()).set_value(1);
    page.click(option->index());
    if (context.form.at("cmdViwPic").enabled()) page.open_screenshot();
  }
  page.scroll();
  fuzz::promise(page.chosen().size() <= std::max<std::size_t>(chart_limit, wizard::home_page_slots),
                "no more charts are chosen than may be");
  return 0;
}

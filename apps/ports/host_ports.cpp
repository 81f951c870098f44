#include "apps/ports/host_ports.h"

#include "database/environment.h"
#include "support/encoding.h"
#include "support/host.h"
#include "support/language.h"

namespace apps {
namespace {

constexpr std::string_view class_suffix = ".LanguageDLL";

std::string_view table_name(std::string_view class_name) {
  return class_name.ends_with(class_suffix) ? class_name.substr(0, class_name.size() - class_suffix.size())
                                            : class_name;
}

}  // namespace

wizard::Ports host_ports(support::Registry& registry, wizard::UserPort& user, const std::string& own_folder,
                         const std::string& program_folder) {
  wizard::Ports ports;
  ports.registry = &registry;
  ports.ini = &support::host_ini_files();
  ports.files = &support::host_file_system();
  ports.user = &user;
  ports.create_language =
      [own_folder, program_folder](std::string_view class_name) -> std::shared_ptr<const support::LanguageComponent> {
    for (const std::string& folder : {own_folder, program_folder}) {
      if (auto table = support::open_text_table(folder + "texts", table_name(class_name))) return table;
    }
    return nullptr;
  };
  ports.open_engine = engine::open_engine;
  ports.now = [] { return database::Environment{}.present(); };
  ports.own_folder = own_folder;
  return ports;
}

}  // namespace apps

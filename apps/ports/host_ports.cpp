#include "apps/ports/host_ports.h"

#include "database/environment.h"
#include "database/jet_import/import.h"
#include "support/host.h"
#include "support/language.h"

namespace apps {
wizard::Ports host_ports(support::Registry& registry, wizard::UserPort& user, const std::string& own_folder,
                         const std::string& program_folder) {
  wizard::Ports ports;
  ports.registry = &registry;
  ports.ini = &support::host_ini_files();
  ports.files = &support::host_file_system();
  ports.user = &user;
  ports.create_language =
      [own_folder, program_folder](std::string_view class_name) -> std::shared_ptr<const support::LanguageComponent> {
    if (auto component = support::create_language(class_name, own_folder)) return component;
    return support::create_language(class_name, program_folder);
  };
  ports.open_engine = engine::open_engine;
  ports.readable_copy = jet_import::readable_copy;
  ports.now = [] { return database::Environment{}.present(); };
  ports.own_folder = own_folder;
  ports.local_data = support::host_local_data();
  return ports;
}

}  // namespace apps

#include "database/engine/automation/automation_engine.h"

#include "database/engine/automation/automation_database.h"
#include "database/engine/automation/object.h"

namespace engine::automation {

using support::Variant;

namespace {

class AutomationEngine : public Engine {
 public:
  explicit AutomationEngine(std::string_view identifier) : engine_(identifier) {}

  std::unique_ptr<Database> create_database(std::string_view path, std::string_view locale,
                                            std::int32_t version) override {
    Object space = workspace();
    Object database = space.object(Kind::Database, L"CreateDatabase", Variant::of_text(path), Variant::of_text(locale),
                                   Variant::of_long(version));
    return std::make_unique<AutomationDatabase>(engine_, std::move(space), std::move(database), path, OpenFile());
  }

  std::unique_ptr<Database> open_database(std::string_view path, bool exclusive, bool read_only,
                                          std::string_view connect) override {
    const auto open = [exclusive, connect = std::string(connect)](const Object& space, std::string_view file,
                                                                  bool only_read) {
      return space.object(Kind::Database, L"OpenDatabase", Variant::of_text(file), Variant::of_flag(exclusive),
                          Variant::of_flag(only_read), Variant::of_text(connect));
    };
    Object space = workspace();
    Object database = open(space, path, read_only);
    return std::make_unique<AutomationDatabase>(engine_, std::move(space), std::move(database), path,
                                                exclusive && !read_only ? OpenFile(open) : OpenFile());
  }

 private:
  /// A new one, of the user that every database without a security of its own has.
  Object workspace() const {
    return engine_.object(Kind::Workspace, L"CreateWorkspace", Variant::of_text("firststeps"),
                          Variant::of_text("admin"), Variant::of_text(""));
  }

  Object engine_;
};

}  // namespace

std::unique_ptr<Engine> create_automation_engine(std::string_view identifier) {
  if (!support::is_registered(identifier)) support::raise_not_installed(identifier);
  return std::make_unique<AutomationEngine>(identifier);
}

}  // namespace engine::automation

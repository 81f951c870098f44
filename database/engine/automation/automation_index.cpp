#include "database/engine/automation/automation_index.h"

namespace engine::automation {

using support::Variant;

std::shared_ptr<Field> AutomationIndex::create_field(std::string_view name) {
  return std::make_shared<AutomationField>(object_.object(Kind::Field, L"CreateField", Variant::of_text(name)));
}

std::shared_ptr<Field> AutomationIndex::create_field(std::string_view name, DataType type) {
  return std::make_shared<AutomationField>(object_.object(Kind::Field, L"CreateField", Variant::of_text(name),
                                                          Variant::of_short(static_cast<std::int16_t>(type))));
}

std::shared_ptr<Index> AutomationIndexes::item(std::int32_t position) const {
  return std::make_shared<AutomationIndex>(indexes_.item(Kind::Index, position), true);
}

std::shared_ptr<Index> AutomationIndexes::item(std::string_view name) const {
  return std::make_shared<AutomationIndex>(indexes_.item(Kind::Index, name), true);
}

}  // namespace engine::automation

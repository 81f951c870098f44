#include "database/engine/automation/automation_table.h"

namespace engine::automation {

using support::Variant;

namespace {

/// An attribute of tables that the engine keeps for itself.
constexpr std::uint32_t system_table = 0x80000002;

Variant type_argument(DataType type) { return Variant::of_short(static_cast<std::int16_t>(type)); }

}  // namespace

std::shared_ptr<Field> AutomationTableDef::create_field(std::string_view name, DataType type) {
  return std::make_shared<AutomationField>(
      object_.object(Kind::Field, L"CreateField", Variant::of_text(name), type_argument(type)));
}

std::shared_ptr<Field> AutomationTableDef::create_field(std::string_view name, DataType type, std::int32_t size) {
  return std::make_shared<AutomationField>(
      object_.object(Kind::Field, L"CreateField", Variant::of_text(name), type_argument(type), Variant::of_long(size)));
}

std::shared_ptr<Index> AutomationTableDef::create_index(std::string_view name) {
  return std::make_shared<AutomationIndex>(object_.object(Kind::Index, L"CreateIndex", Variant::of_text(name)), false);
}

const std::vector<std::int32_t>& AutomationTableDefs::places() const {
  if (!places_) {
    std::vector<std::int32_t> found;
    const std::int32_t count = tables_.count();
    for (std::int32_t place = 0; place < count; ++place) {
      const auto attributes = static_cast<std::uint32_t>(tables_.item(Kind::TableDef, place).number(L"Attributes"));
      if ((attributes & system_table) == 0) found.push_back(place);
    }
    places_ = std::move(found);
  }
  return *places_;
}

std::shared_ptr<TableDef> AutomationTableDefs::item(std::int32_t position) const {
  const auto& known = places();
  if (position < 0 || static_cast<std::size_t>(position) >= known.size())
    raise(error_number::item_not_found, std::to_string(position));
  return std::make_shared<AutomationTableDef>(tables_.item(Kind::TableDef, known[static_cast<std::size_t>(position)]),
                                              true);
}

std::shared_ptr<TableDef> AutomationTableDefs::item(std::string_view name) const {
  return std::make_shared<AutomationTableDef>(tables_.item(Kind::TableDef, name), true);
}

void AutomationTableDefs::append(const std::shared_ptr<TableDef>& table) {
  tables_.append(ours<AutomationTableDef>(table).object());
  forget();
}

void AutomationTableDefs::remove(std::string_view name) {
  tables_.remove(name);
  forget();
}

void AutomationTableDefs::forget() noexcept {
  tables_.forget();
  places_.reset();
}

void AutomationFields::append(const std::shared_ptr<Field>& field) {
  const AutomationField& added = ours<AutomationField>(field);
  try {
    fields_.append(added.object());
  } catch (const support::RuntimeError& error) {
    // Engines raise one of two numbers for it.
    if (error.number() == error_number::field_exists) raise(error_number::field_defined_twice, added.name());
    throw;
  }
}

std::shared_ptr<Field> AutomationIndex::create_field(std::string_view name) {
  return std::make_shared<AutomationField>(object_.object(Kind::Field, L"CreateField", Variant::of_text(name)));
}

std::shared_ptr<Field> AutomationIndex::create_field(std::string_view name, DataType type) {
  return std::make_shared<AutomationField>(
      object_.object(Kind::Field, L"CreateField", Variant::of_text(name), type_argument(type)));
}

std::shared_ptr<Index> AutomationIndexes::item(std::int32_t position) const {
  return std::make_shared<AutomationIndex>(indexes_.item(Kind::Index, position), true);
}

std::shared_ptr<Index> AutomationIndexes::item(std::string_view name) const {
  return std::make_shared<AutomationIndex>(indexes_.item(Kind::Index, name), true);
}

}  // namespace engine::automation

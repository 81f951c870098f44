// Fields of table definitions and indexes, by automation.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "database/engine/automation/object.h"
#include "database/engine/engine.h"

namespace engine::automation {

class AutomationField : public Field {
 public:
  explicit AutomationField(Object object) : object_(std::move(object)) {}

  std::string name() const override { return object_.text(L"Name"); }
  void set_name(std::string_view name) override { put_text(L"Name", name); }
  DataType type() const override { return static_cast<DataType>(object_.number(L"Type")); }
  std::int32_t size() const override { return object_.number(L"Size"); }
  void set_size(std::int32_t size) override { object_.put(L"Size", support::Variant::of_long(size)); }
  std::int32_t attributes() const override { return object_.number(L"Attributes"); }
  void set_attributes(std::int32_t attributes) override {
    object_.put(L"Attributes", support::Variant::of_long(attributes));
  }
  std::string default_value() const override { return object_.text(L"DefaultValue"); }
  void set_default_value(std::string_view expression) override { put_text(L"DefaultValue", expression); }
  bool required() const override { return object_.flag(L"Required"); }
  void set_required(bool required) override { object_.put(L"Required", support::Variant::of_flag(required)); }
  bool allow_zero_length() const override { return object_.flag(L"AllowZeroLength"); }
  void set_allow_zero_length(bool allow) override { object_.put(L"AllowZeroLength", support::Variant::of_flag(allow)); }
  std::int16_t ordinal_position() const override {
    return static_cast<std::int16_t>(object_.number(L"OrdinalPosition"));
  }
  void set_ordinal_position(std::int16_t position) override {
    object_.put(L"OrdinalPosition", support::Variant::of_short(position));
  }
  std::string validation_rule() const override { return object_.text(L"ValidationRule"); }
  void set_validation_rule(std::string_view rule) override { put_text(L"ValidationRule", rule); }
  std::string validation_text() const override { return object_.text(L"ValidationText"); }
  void set_validation_text(std::string_view text) override { put_text(L"ValidationText", text); }

  const Object& object() const noexcept { return object_; }

 private:
  void put_text(std::wstring_view property, std::string_view text) {
    object_.put(property, support::Variant::of_text(text));
  }

  Object object_;
};

/// The collection "Fields" of a table definition or an index.
class AutomationFields : public Fields {
 public:
  AutomationFields(const Object& owner, Kind kind, bool stored) : fields_(owner, kind, L"Fields", stored) {}

  std::int32_t count() const override { return fields_.count(); }
  std::shared_ptr<Field> item(std::int32_t position) const override {
    return std::make_shared<AutomationField>(fields_.item(Kind::Field, position));
  }
  std::shared_ptr<Field> item(std::string_view name) const override {
    return std::make_shared<AutomationField>(fields_.item(Kind::Field, name));
  }
  void append(const std::shared_ptr<Field>& field) override;
  void remove(std::string_view name) override { fields_.remove(name); }

 private:
  Collection fields_;
};

}  // namespace engine::automation

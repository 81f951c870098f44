// Table definitions of a database, by automation.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "database/engine/automation/automation_field.h"
#include "database/engine/automation/automation_index.h"
#include "database/engine/automation/object.h"
#include "database/engine/engine.h"

namespace engine::automation {

class AutomationTableDef : public TableDef {
 public:
  /// `stored`: of the database, not a new one.
  AutomationTableDef(Object object, bool stored)
      : object_(std::move(object)), fields_(object_, Kind::TableFields, stored), indexes_(object_, stored) {}

  std::string name() const override { return object_.text(L"Name"); }
  void set_name(std::string_view name) override { put_text(L"Name", name); }
  std::int32_t attributes() const override { return object_.number(L"Attributes"); }
  void set_attributes(std::int32_t attributes) override {
    object_.put(L"Attributes", support::Variant::of_long(attributes));
  }
  std::string connect() const override { return object_.text(L"Connect"); }
  void set_connect(std::string_view connect) override { put_text(L"Connect", connect); }
  std::string source_table_name() const override { return object_.text(L"SourceTableName"); }
  void set_source_table_name(std::string_view name) override { put_text(L"SourceTableName", name); }
  std::string validation_rule() const override { return object_.text(L"ValidationRule"); }
  void set_validation_rule(std::string_view rule) override { put_text(L"ValidationRule", rule); }
  std::string validation_text() const override { return object_.text(L"ValidationText"); }
  void set_validation_text(std::string_view text) override { put_text(L"ValidationText", text); }
  std::shared_ptr<Field> create_field(std::string_view name, DataType type) override;
  std::shared_ptr<Field> create_field(std::string_view name, DataType type, std::int32_t size) override;
  std::shared_ptr<Index> create_index(std::string_view name) override;
  Fields& fields() override { return fields_; }
  Indexes& indexes() override { return indexes_; }

  const Object& object() const noexcept { return object_; }

 private:
  void put_text(std::wstring_view property, std::string_view text) {
    object_.put(property, support::Variant::of_text(text));
  }

  Object object_;
  AutomationFields fields_;
  AutomationIndexes indexes_;
};

/// The user's tables: the engine's collection holds tables of its own as well.
class AutomationTableDefs : public TableDefs {
 public:
  explicit AutomationTableDefs(const Object& database) : tables_(database, Kind::TableDefs, L"TableDefs", true) {}

  std::int32_t count() const override { return static_cast<std::int32_t>(places().size()); }
  std::shared_ptr<TableDef> item(std::int32_t position) const override;
  std::shared_ptr<TableDef> item(std::string_view name) const override;
  void append(const std::shared_ptr<TableDef>& table) override;
  void remove(std::string_view name) override;
  /// The layout may have changed.
  void forget() noexcept;

 private:
  /// Places of the user's tables in the engine's collection.
  const std::vector<std::int32_t>& places() const;

  Collection tables_;
  mutable std::optional<std::vector<std::int32_t>> places_;
};

}  // namespace engine::automation

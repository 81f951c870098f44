// Table definitions of a database with their fields and indexes, by automation.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

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

class AutomationIndex : public Index {
 public:
  AutomationIndex(Object object, bool stored)
      : object_(std::move(object)), fields_(object_, Kind::IndexFields, stored) {}

  std::string name() const override { return object_.text(L"Name"); }
  bool primary() const override { return object_.flag(L"Primary"); }
  void set_primary(bool primary) override { put_flag(L"Primary", primary); }
  bool unique() const override { return object_.flag(L"Unique"); }
  void set_unique(bool unique) override { put_flag(L"Unique", unique); }
  bool required() const override { return object_.flag(L"Required"); }
  void set_required(bool required) override { put_flag(L"Required", required); }
  bool ignore_nulls() const override { return object_.flag(L"IgnoreNulls"); }
  void set_ignore_nulls(bool ignore) override { put_flag(L"IgnoreNulls", ignore); }
  bool clustered() const override { return object_.flag(L"Clustered"); }
  void set_clustered(bool clustered) override { put_flag(L"Clustered", clustered); }
  std::shared_ptr<Field> create_field(std::string_view name) override;
  std::shared_ptr<Field> create_field(std::string_view name, DataType type) override;
  Fields& fields() override { return fields_; }

  const Object& object() const noexcept { return object_; }

 private:
  void put_flag(std::wstring_view property, bool flag) { object_.put(property, support::Variant::of_flag(flag)); }

  Object object_;
  AutomationFields fields_;
};

class AutomationIndexes : public Indexes {
 public:
  AutomationIndexes(const Object& table, bool stored) : indexes_(table, Kind::Indexes, L"Indexes", stored) {}

  std::int32_t count() const override { return indexes_.count(); }
  std::shared_ptr<Index> item(std::int32_t position) const override;
  std::shared_ptr<Index> item(std::string_view name) const override;
  void append(const std::shared_ptr<Index>& index) override { indexes_.append(ours<AutomationIndex>(index).object()); }
  void remove(std::string_view name) override { indexes_.remove(name); }

 private:
  Collection indexes_;
};

class AutomationTableDef : public TableDef {
 public:
  /// `stored`: the table is in the database already; false for a new one.
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

/// The user's tables. The engine's collection also holds tables of the engine.
class AutomationTableDefs : public TableDefs {
 public:
  explicit AutomationTableDefs(const Object& database) : tables_(database, Kind::TableDefs, L"TableDefs", true) {}

  std::int32_t count() const override { return static_cast<std::int32_t>(places().size()); }
  std::shared_ptr<TableDef> item(std::int32_t position) const override;
  std::shared_ptr<TableDef> item(std::string_view name) const override;
  void append(const std::shared_ptr<TableDef>& table) override;
  void remove(std::string_view name) override;
  /// Reads the list anew at its next use: the layout may have changed.
  void forget() noexcept;

 private:
  /// Positions of the user's tables in the engine's collection.
  const std::vector<std::int32_t>& places() const;

  Collection tables_;
  mutable std::optional<std::vector<std::int32_t>> places_;
};

}  // namespace engine::automation

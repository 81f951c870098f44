// Indexes of a table definition, by automation.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "database/engine/automation/automation_field.h"
#include "database/engine/automation/object.h"
#include "database/engine/engine.h"

namespace engine::automation {

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

}  // namespace engine::automation

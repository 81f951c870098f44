// The objects of the layout: tables, fields, indexes, and their collections.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "database/engine/engine.h"
#include "tests/automation/server/scripted_object.h"

namespace test_server {

/// The tables as the collection last read them. It does not follow changes by statements until it is refreshed.
class TableList {
 public:
  explicit TableList(std::shared_ptr<engine::Database> database) : database_(std::move(database)) { read(); }
  void read();
  engine::Database& database() const { return *database_; }
  /// The first table is the engine's own, as in every Jet file.
  std::int32_t count() const { return static_cast<std::int32_t>(names_.size()) + 1; }
  std::shared_ptr<engine::TableDef> item(const VARIANT& which) const;

 private:
  std::shared_ptr<engine::Database> database_;
  std::vector<std::string> names_;
};

class FieldObject final : public ScriptedObject<FieldObject> {
 public:
  static constexpr const wchar_t* kind = L"Field";
  static std::span<const Member<FieldObject>> members();
  explicit FieldObject(std::shared_ptr<engine::Field> held) : field(std::move(held)) {}
  std::shared_ptr<engine::Field> field;
};

class FieldsObject final : public ScriptedObject<FieldsObject> {
 public:
  static constexpr const wchar_t* kind = L"Fields";
  static std::span<const Member<FieldsObject>> members();
  explicit FieldsObject(std::shared_ptr<engine::Fields> held) : fields(std::move(held)) {}
  std::shared_ptr<engine::Fields> fields;
};

class IndexObject final : public ScriptedObject<IndexObject> {
 public:
  static constexpr const wchar_t* kind = L"Index";
  static std::span<const Member<IndexObject>> members();
  explicit IndexObject(std::shared_ptr<engine::Index> held) : index(std::move(held)) {}
  std::shared_ptr<engine::Index> index;
};

class IndexesObject final : public ScriptedObject<IndexesObject> {
 public:
  static constexpr const wchar_t* kind = L"Indexes";
  static std::span<const Member<IndexesObject>> members();
  explicit IndexesObject(std::shared_ptr<engine::Indexes> held) : indexes(std::move(held)) {}
  std::shared_ptr<engine::Indexes> indexes;
};

class TableDefObject final : public ScriptedObject<TableDefObject> {
 public:
  static constexpr const wchar_t* kind = L"TableDef";
  static std::span<const Member<TableDefObject>> members();
  TableDefObject(std::shared_ptr<engine::TableDef> held, std::shared_ptr<TableList> list)
      : table(std::move(held)), tables(std::move(list)) {}
  std::shared_ptr<engine::TableDef> table;
  std::shared_ptr<TableList> tables;
};

class TableDefsObject final : public ScriptedObject<TableDefsObject> {
 public:
  static constexpr const wchar_t* kind = L"TableDefs";
  static std::span<const Member<TableDefsObject>> members();
  explicit TableDefsObject(std::shared_ptr<TableList> list) : tables(std::move(list)) {}
  std::shared_ptr<TableList> tables;
};

}  // namespace test_server

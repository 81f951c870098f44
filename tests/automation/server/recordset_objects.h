// A recordset and its fields. The fields show its current row.
#pragma once

#include <memory>
#include <string>

#include "database/engine/engine.h"
#include "tests/automation/server/scripted_object.h"

namespace test_server {

/// What the objects of one recordset share.
struct Rows {
  std::shared_ptr<engine::Recordset> rows;
  std::shared_ptr<engine::Database> database;
  std::string source;
  /// The field that was given an empty text which it may not have; Update refuses it.
  std::string refused_empty_text{};

  /// The table's field that the source reads; null for a column that is computed or has another name.
  std::shared_ptr<engine::Field> stored_field(const std::string& name) const;
};

class RecordsetObject final : public ScriptedObject<RecordsetObject> {
 public:
  static constexpr const wchar_t* kind = L"Recordset";
  static std::span<const Member<RecordsetObject>> members();
  explicit RecordsetObject(Rows held) : shared(std::make_shared<Rows>(std::move(held))) {}
  std::shared_ptr<Rows> shared;
};

class RowFieldsObject final : public ScriptedObject<RowFieldsObject> {
 public:
  static constexpr const wchar_t* kind = L"RowFields";
  static std::span<const Member<RowFieldsObject>> members();
  explicit RowFieldsObject(std::shared_ptr<Rows> held) : shared(std::move(held)) {}
  std::shared_ptr<Rows> shared;
};

class RowFieldObject final : public ScriptedObject<RowFieldObject> {
 public:
  static constexpr const wchar_t* kind = L"RowField";
  static std::span<const Member<RowFieldObject>> members();
  RowFieldObject(std::shared_ptr<Rows> held, std::int32_t place)
      : shared(std::move(held)), position(place), name(shared->rows->field_name(place)) {}
  std::shared_ptr<Rows> shared;
  std::int32_t position;
  std::string name;
};

}  // namespace test_server

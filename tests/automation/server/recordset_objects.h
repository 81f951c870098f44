// A recordset, and its fields, which follow its current row.
#pragma once

#include <memory>

#include "database/engine/engine.h"
#include "tests/automation/server/scripted_object.h"

namespace test_server {

class RecordsetObject final : public ScriptedObject<RecordsetObject> {
 public:
  static constexpr const wchar_t* kind = L"Recordset";
  static std::span<const Member<RecordsetObject>> members();
  explicit RecordsetObject(std::shared_ptr<engine::Recordset> held) : rows(std::move(held)) {}
  std::shared_ptr<engine::Recordset> rows;
};

class RowFieldsObject final : public ScriptedObject<RowFieldsObject> {
 public:
  static constexpr const wchar_t* kind = L"RowFields";
  static std::span<const Member<RowFieldsObject>> members();
  explicit RowFieldsObject(std::shared_ptr<engine::Recordset> held) : rows(std::move(held)) {}
  std::shared_ptr<engine::Recordset> rows;
};

class RowFieldObject final : public ScriptedObject<RowFieldObject> {
 public:
  static constexpr const wchar_t* kind = L"RowField";
  static std::span<const Member<RowFieldObject>> members();
  RowFieldObject(std::shared_ptr<engine::Recordset> held, std::int32_t place)
      : rows(std::move(held)), position(place), name(rows->field_name(place)) {}
  std::shared_ptr<engine::Recordset> rows;
  std::int32_t position;
  std::string name;
};

}  // namespace test_server

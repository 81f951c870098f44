// A field. A program first builds it up as a definition; once it is appended to a table, it shows and changes the
// catalogue.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "database/engine/embedded/jet_sql/catalogue.h"
#include "database/engine/embedded/session.h"
#include "database/engine/engine.h"

namespace engine::embedded {

/// A table of the file, by its identity in the catalogue, which stays the same when the table is renamed.
struct TablePlace {
  std::shared_ptr<Session> session;
  std::int64_t id = 0;

  TablePointer table() const { return session->table_at_hand(id); }
};

class FieldObject : public Field {
 public:
  /// A field that is not appended yet.
  explicit FieldObject(FieldDefinition definition) : definition_(std::move(definition)) {}
  /// A field of a table of the file.
  FieldObject(TablePlace place, std::int64_t id) : place_(std::move(place)), id_(id) {}

  std::string name() const override { return definition().name; }
  void set_name(std::string_view name) override;
  DataType type() const override { return definition().type; }
  std::int32_t size() const override { return definition().size; }
  void set_size(std::int32_t size) override;
  std::int32_t attributes() const override { return definition().attributes; }
  void set_attributes(std::int32_t attributes) override;
  std::string default_value() const override { return definition().default_value; }
  void set_default_value(std::string_view expression) override;
  bool required() const override { return definition().required; }
  void set_required(bool required) override;
  bool allow_zero_length() const override { return definition().allow_zero_length; }
  void set_allow_zero_length(bool allow) override;
  std::int16_t ordinal_position() const override { return definition().ordinal_position; }
  void set_ordinal_position(std::int16_t position) override;
  std::string validation_rule() const override { return definition().validation_rule; }
  void set_validation_rule(std::string_view rule) override;
  std::string validation_text() const override { return definition().validation_text; }
  void set_validation_text(std::string_view text) override;

  FieldDefinition definition() const;
  bool appended() const noexcept { return place_.session != nullptr || frozen_; }
  void append_to(TablePlace place);
  /// For a field that is appended to an index: it cannot be changed any more.
  void freeze() noexcept { frozen_ = true; }

 private:
  template <typename Change>
  void change(Change&& change);

  FieldDefinition definition_;  ///< of a field that is not appended to a table of the file
  TablePlace place_;
  std::int64_t id_ = 0;
  bool frozen_ = false;
};

}  // namespace engine::embedded

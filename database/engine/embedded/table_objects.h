// The objects of the layout: a definition that a program builds up, and, once appended, a window on the catalogue.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "database/engine/embedded/layout.h"
#include "database/engine/embedded/session.h"
#include "database/engine/engine.h"

namespace engine::embedded {

/// A table of the file, by its identity in the catalogue: it stays the same when renamed.
struct TablePlace {
  std::shared_ptr<Session> session;
  std::int64_t id = 0;

  TablePointer table() const { return session->table_at_hand(id); }
};

class FieldObject : public Field {
 public:
  /// Not appended yet.
  explicit FieldObject(FieldDefinition definition) : definition_(std::move(definition)) {}
  /// A field of a table of the file.
  FieldObject(TablePlace place, std::string_view name) : place_(std::move(place)) { definition_.name = name; }

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
  void append_to(TablePlace place) { place_ = std::move(place); }
  /// Appended to an index: nothing of it can be changed any more.
  void freeze() noexcept { frozen_ = true; }

 private:
  template <typename Change>
  void change(Change&& change);

  FieldDefinition definition_;  ///< of an appended field only the name
  TablePlace place_;
  bool frozen_ = false;
};

class IndexObject : public Index {
 public:
  /// Not appended yet.
  explicit IndexObject(std::string_view name);
  /// An index of a table.
  explicit IndexObject(const IndexDefinition& definition);

  std::string name() const override { return definition_.name; }
  bool primary() const override { return definition_.primary; }
  void set_primary(bool primary) override;
  bool unique() const override { return definition_.unique || definition_.primary; }
  void set_unique(bool unique) override { set(&IndexDefinition::unique, unique); }
  bool required() const override { return definition_.required || definition_.primary; }
  void set_required(bool required) override { set(&IndexDefinition::required, required); }
  bool ignore_nulls() const override { return definition_.ignore_nulls; }
  void set_ignore_nulls(bool ignore) override { set(&IndexDefinition::ignore_nulls, ignore); }
  bool clustered() const override { return definition_.clustered; }
  void set_clustered(bool clustered) override { set(&IndexDefinition::clustered, clustered); }
  std::shared_ptr<Field> create_field(std::string_view name) override;
  std::shared_ptr<Field> create_field(std::string_view name, DataType type) override;
  Fields& fields() override { return fields_; }

  IndexDefinition definition() const;
  void freeze() noexcept { appended_ = true; }

 private:
  class IndexFields : public Fields {
   public:
    explicit IndexFields(const IndexObject& index) : index_(index) {}
    std::int32_t count() const override { return static_cast<std::int32_t>(list_.size()); }
    std::shared_ptr<Field> item(std::int32_t position) const override;
    std::shared_ptr<Field> item(std::string_view name) const override;
    void append(const std::shared_ptr<Field>& field) override;
    void remove(std::string_view name) override;
    void add(std::shared_ptr<FieldObject> field) { list_.push_back(std::move(field)); }

   private:
    const IndexObject& index_;
    std::vector<std::shared_ptr<FieldObject>> list_;
  };

  void set(bool IndexDefinition::*property, bool value);

  IndexDefinition definition_;
  bool appended_ = false;
  IndexFields fields_{*this};
};

class TableObject : public TableDef {
 public:
  /// Not appended yet.
  explicit TableObject(std::string_view name);
  explicit TableObject(TablePlace place);

  std::string name() const override { return properties().name; }
  void set_name(std::string_view name) override;
  std::int32_t attributes() const override { return properties().attributes; }
  void set_attributes(std::int32_t attributes) override;
  std::string connect() const override { return properties().connect; }
  void set_connect(std::string_view connect) override;
  std::string source_table_name() const override { return properties().source_table_name; }
  void set_source_table_name(std::string_view name) override;
  std::string validation_rule() const override { return properties().validation_rule; }
  void set_validation_rule(std::string_view rule) override;
  std::string validation_text() const override { return properties().validation_text; }
  void set_validation_text(std::string_view text) override;
  std::shared_ptr<Field> create_field(std::string_view name, DataType type) override;
  std::shared_ptr<Field> create_field(std::string_view name, DataType type, std::int32_t size) override;
  std::shared_ptr<Index> create_index(std::string_view name) override;
  Fields& fields() override { return fields_; }
  Indexes& indexes() override { return indexes_; }

  bool appended() const noexcept { return place_.session != nullptr; }
  /// The whole definition of a table that is not appended yet.
  TableDefinition definition() const;
  void append_to(TablePlace place);

 private:
  class TableFields : public Fields {
   public:
    explicit TableFields(TableObject& table) : table_(table) {}
    std::int32_t count() const override;
    std::shared_ptr<Field> item(std::int32_t position) const override;
    std::shared_ptr<Field> item(std::string_view name) const override;
    void append(const std::shared_ptr<Field>& field) override;
    void remove(std::string_view name) override;

   private:
    TableObject& table_;
  };

  class TableIndexes : public Indexes {
   public:
    explicit TableIndexes(TableObject& table) : table_(table) {}
    std::int32_t count() const override;
    std::shared_ptr<Index> item(std::int32_t position) const override;
    std::shared_ptr<Index> item(std::string_view name) const override;
    void append(const std::shared_ptr<Index>& index) override;
    void remove(std::string_view name) override;

   private:
    TableObject& table_;
  };

  TableDefinition properties() const;
  template <typename Change>
  void change(Change&& change);

  TableDefinition definition_;  ///< of a table that is not appended yet, without fields and indexes
  TablePlace place_;
  std::vector<std::shared_ptr<FieldObject>> new_fields_;  ///< appended to a table that is not appended yet
  std::vector<std::shared_ptr<IndexObject>> new_indexes_;
  TableFields fields_{*this};
  TableIndexes indexes_{*this};
};

class TableCollection : public TableDefs {
 public:
  explicit TableCollection(std::shared_ptr<Session> session) : session_(std::move(session)) {}
  std::int32_t count() const override;
  std::shared_ptr<TableDef> item(std::int32_t position) const override;
  std::shared_ptr<TableDef> item(std::string_view name) const override;
  void append(const std::shared_ptr<TableDef>& table) override;
  void remove(std::string_view name) override;

 private:
  std::shared_ptr<Session> session_;
};

}  // namespace engine::embedded

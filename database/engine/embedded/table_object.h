// A table, and the tables of a database. A program first builds a table up as a definition; once it is appended, it
// shows and changes the catalogue.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "database/engine/embedded/field_object.h"
#include "database/engine/embedded/index_object.h"
#include "database/engine/embedded/jet_sql/catalogue.h"
#include "database/engine/embedded/session.h"
#include "database/engine/engine.h"

namespace engine::embedded {

class TableObject : public TableDef {
 public:
  /// A table that is not appended yet.
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

  TableDefinition definition_;  ///< of a table that is not appended yet; without fields and indexes
  TablePlace place_;
  std::vector<std::shared_ptr<FieldObject>> new_fields_;  ///< of a table that is not appended yet
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

// An index. A program builds it up as a definition until it is appended.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "database/engine/embedded/field_object.h"
#include "database/engine/embedded/jet_sql/catalogue.h"
#include "database/engine/engine.h"

namespace engine::embedded {

class IndexObject : public Index {
 public:
  /// An index that is not appended yet.
  explicit IndexObject(std::string_view name);
  /// An index of a table.
  explicit IndexObject(const IndexDefinition& definition);

  std::string name() const override { return definition_.name; }
  bool primary() const override { return definition_.primary; }
  void set_primary(bool primary) override;
  bool unique() const override { return definition_.forbids_duplicates(); }
  void set_unique(bool unique) override { set(&IndexDefinition::unique, unique); }
  bool required() const override { return definition_.forbids_null(); }
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

}  // namespace engine::embedded

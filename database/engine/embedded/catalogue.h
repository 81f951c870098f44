// What the embedded engine knows of the user's tables: the definition of each field and index, cached per open database.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "database/engine/engine.h"

namespace engine::embedded {

struct FieldDefinition {
  std::string name;
  DataType type = DataType::Text;
  std::int32_t size = 0;  ///< characters for Text, bytes for numbers
  std::int32_t attributes = 0;
  std::string default_value;
  bool required = false;
  bool allow_zero_length = false;
  std::int16_t ordinal_position = 0;
  std::string validation_rule;
  std::string validation_text;

  bool auto_increment() const noexcept { return (attributes & attribute_auto_increment) != 0; }
};

struct IndexDefinition {
  std::string name;
  std::vector<std::string> fields;
  bool primary = false;
  bool unique = false;
  bool required = false;
  bool ignore_nulls = false;
  bool clustered = false;
};

struct TableDefinition {
  std::string name;
  std::vector<FieldDefinition> fields;  ///< in the order of appending
  std::vector<IndexDefinition> indexes;
  /// Null where there is none; names ignore case.
  const FieldDefinition* find_field(std::string_view field) const noexcept;
};

/// Read side of the catalogue, as the SQL compiler sees it.
class Catalogue {
 public:
  virtual ~Catalogue() = default;
  /// Null where there is no such table. The pointer lives until the catalogue next changes.
  virtual const TableDefinition* find_table(std::string_view name) const = 0;
};

}  // namespace engine::embedded

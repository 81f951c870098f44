// What the embedded engine knows of the user's tables: the definition of each field and index. It is cached for each
// open database.
#pragma once

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "database/engine/engine.h"
#include "support/encoding.h"

namespace engine::embedded {

inline constexpr std::int32_t longest_text = 255;  ///< of a field of type Text, in characters
inline constexpr std::size_t most_fields = 255;    ///< of a table, an index or a query

struct FieldDefinition {
  std::int64_t id = 0;  ///< stays the same in the file when the field is renamed; 0 before it is stored there
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
  bool holds_text() const noexcept { return is_text(type); }
};

struct IndexDefinition {
  std::string name;
  std::vector<std::string> fields;
  bool primary = false;
  bool unique = false;
  bool required = false;
  bool ignore_nulls = false;
  bool clustered = false;

  /// True where Null in one of the fields is error 3058.
  bool forbids_null() const noexcept { return primary || required; }
  /// True where a second row of the same values is error 3022.
  bool forbids_duplicates() const noexcept { return primary || unique; }
};

/// The definition of this name, without regard to case; null where there is none.
template <typename Definition>
Definition* find_named(std::vector<Definition>& definitions, std::string_view name) {
  auto found = std::ranges::find(definitions, name, &Definition::name);
  if (found == definitions.end()) {
    found = std::ranges::find_if(definitions, [name](const Definition& definition) {
      return support::equal_ignoring_case(definition.name, name);
    });
  }
  return found == definitions.end() ? nullptr : &*found;
}

template <typename Definition>
const Definition* find_named(const std::vector<Definition>& definitions, std::string_view name) {
  return find_named(const_cast<std::vector<Definition>&>(definitions), name);
}

struct TableDefinition {
  std::string name;
  std::vector<FieldDefinition> fields;  ///< in the order of appending
  std::vector<IndexDefinition> indexes = {};
  std::int32_t attributes = 0;
  std::string connect = {};
  std::string source_table_name = {};
  std::string validation_rule = {};
  std::string validation_text = {};

  /// Null where there is none; names ignore case.
  const FieldDefinition* find_field(std::string_view field) const noexcept { return find_named(fields, field); }
  /// Null where there is none.
  const FieldDefinition* auto_number() const noexcept {
    const auto found = std::ranges::find_if(fields, &FieldDefinition::auto_increment);
    return found == fields.end() ? nullptr : &*found;
  }
  /// SQLite's name for the identity of a row that no field hides; empty where fields hide all such names.
  std::string_view row_id_column() const noexcept {
    for (const std::string_view column : {"rowid", "_rowid_", "oid"}) {
      if (!find_field(column)) return column;
    }
    return {};
  }
};

/// The catalogue as the SQL compiler sees it: it can only be read.
class Catalogue {
 public:
  virtual ~Catalogue() = default;
  /// Null where there is no such table. The pointer lives until the catalogue next changes.
  virtual const TableDefinition* find_table(std::string_view name) const = 0;
};

}  // namespace engine::embedded

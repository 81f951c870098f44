// Fields that hold the number of a row in another table.
#pragma once

#include <bitset>
#include <cstdint>
#include <span>
#include <string_view>
#include <unordered_map>

#include "database/engine/engine.h"

namespace database::keeping {

struct Reference {
  std::string_view table, field;
  std::string_view target, key;
  bool may_be_none = false;  ///< 0 and below mean that there is no such row
};

std::span<const Reference> references();

/// A set of row numbers, with one bit for each.
class NumberSet {
 public:
  void insert(std::int32_t number);
  bool contains(std::int32_t number) const;

 private:
  static constexpr std::int32_t chunk_size = 1024;
  std::unordered_map<std::int32_t, std::bitset<chunk_size>> chunks_;
};

/// The numbers in a field of a table. Raises what the engine raises.
NumberSet numbers_of(engine::Database& database, std::string_view table, std::string_view field);

}  // namespace database::keeping

// Writes what is stored in a field: a value with the field's conversions and checks around it, and the rules of the
// row. Conversions and checks are left out where a constant or a field of the same kind proves that they are needless.
#pragma once

#include <functional>
#include <vector>

#include "database/engine/embedded/jet_sql/query_writer.h"
#include "database/engine/embedded/jet_sql/validation_rule.h"
#include "database/engine/engine_error.h"

namespace engine::embedded::jet_sql {

enum class ValueOrigin {
  Constant,
  /// A field of a table. It holds what its type says, or Null, or an empty text that was allowed once.
  Field,
  /// An expression, whose type is only what the compiler believes.
  Expression,
};

ValueOrigin origin_of(const Expression& expression) noexcept;
ValueOrigin origin_of(const OutputColumn& column) noexcept;

/// Refuse: a value that cannot be stored fails the statement. Append: texts are cut, and rows that cannot be stored are
/// left out. Default: the value is only converted.
enum class StoreMode { Refuse, Append, Default };

class StoredRowWriter {
 public:
  using Writer = std::function<void()>;

  /// What is known of a value that is to be stored.
  struct Given {
    ValueType type;
    ValueOrigin origin;
    bool empty = false;  ///< it is an empty constant
  };

  StoredRowWriter(SqlText& sql, QueryWriter& queries, const TableDefinition& changed);

  /// Stores the value of a list or an assignment.
  void store(const FieldDefinition& field, const Expression& given);
  void checked_for_null(const FieldDefinition& field, StoreMode mode, const Given& given, const Writer& write_value);
  void convert(const FieldDefinition& field, const Given& given, StoreMode mode, const Writer& write_value);
  /// The error for Null in the field; none where Null may stand.
  error_number::Number null_error(const FieldDefinition& field) const noexcept;

  // Rules are checked on the row as it will be stored. A subselect in FROM gives that row the name that the rules use.
  bool has_rules() const noexcept { return !rules_.empty(); }
  /// The rules of the fields for which `wanted` is true. For the table's own rule, `wanted` is asked with null.
  std::vector<const Rule*> rules(const std::function<bool(const FieldDefinition*)>& wanted) const;
  void named_stored(const FieldDefinition& field, bool named, const Writer& write_stored);
  void named_row();
  void raise_breaches(const std::vector<const Rule*>& rules);
  void leave_out_breaches();

 private:
  void convert_text(const FieldDefinition& field, const Given& given, StoreMode mode, const Writer& write_value);

  struct FieldRule {
    const FieldDefinition* field = nullptr;  ///< null for the table's own rule
    Rule rule;
  };

  SqlText& sql_;
  QueryWriter& queries_;
  const TableDefinition& table_;
  std::vector<FieldRule> rules_;
};

}  // namespace engine::embedded::jet_sql

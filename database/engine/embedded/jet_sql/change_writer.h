// Writes INSERT, UPDATE and DELETE as SQLite text, with the conversions and checks of each field around what is stored
// in it, except where a constant or another field of the same kind proves them needless.
#pragma once

#include <functional>
#include <string>
#include <variant>
#include <vector>

#include "database/engine/embedded/jet_sql/query_writer.h"
#include "database/engine/embedded/jet_sql/validation_rule.h"
#include "database/engine/engine_error.h"

namespace engine::embedded::jet_sql {

enum class ValueOrigin {
  Constant,
  /// A field of a table: it holds what its type tells, or Null, or an empty text that was allowed once.
  Field,
  /// Its type is what the compiler believes.
  Expression,
};

class ChangeWriter {
 public:
  explicit ChangeWriter(const TableDefinition& changed);

  /// 3127 for an unknown field, 3063 for one named twice, 3346 where values and fields differ in number.
  void insert(const InsertStatement& statement);
  /// 3113 for an AutoNumber.
  void update(const UpdateStatement& statement, const Source& target);
  void remove(const DeleteStatement& statement, const Source& target);
  /// The value converted to the field's type; neither Null nor an empty text is refused.
  void default_value(const Expression& expression, const FieldDefinition& field);

  /// What was written so far.
  std::string take() { return sql_.take(); }

 private:
  using Writer = std::function<void()>;

  /// Refuse: a value that cannot be stored fails the statement. Append: texts are cut, rows that cannot be stored are
  /// left out. Default: converted only.
  enum class StoreMode { Refuse, Append, Default };

  /// What is known of a value that is to be stored.
  struct Given {
    ValueType type;
    ValueOrigin origin;
    bool empty = false;  ///< an empty constant
  };

  /// A field that an INSERT writes, and the value of the list, the column of the query or the default that it gets.
  struct Destination {
    const FieldDefinition* field = nullptr;
    std::size_t position = 0;
    std::string default_text;
    bool is_default = false;
  };

  std::vector<Destination> destinations(const InsertStatement& statement) const;
  std::vector<std::string> field_names(const InsertStatement& statement) const;
  void add_defaults(std::vector<Destination>& fields) const;
  void head(const std::vector<Destination>& fields, bool append);
  void row_identity();
  void default_of(const Destination& destination, bool append);
  template <typename Write>
  void number_or_value(const FieldDefinition& field, Write write_value);
  void values(const InsertStatement& statement, const std::vector<Destination>& fields);
  void append(const QueryTree& query, const std::vector<Destination>& fields);
  void append_plain(const QueryTree& query, const std::vector<Destination>& fields);
  template <typename Write>
  void append_columns(const QueryTree& query, const std::vector<Destination>& fields, Write write_column);
  template <typename Write>
  void append_filters(const QueryTree& query, const std::vector<Destination>& fields, std::string_view before,
                      Write write_column);

  // Updates and rules (change_writer_update.cpp). Rules are checked on the row as it will be stored, which a
  // subselect in FROM gives the name that they use.
  void named_stored(const FieldDefinition& field, bool named, const Writer& write_stored);
  void named_row();
  void raise_breaches(const std::vector<const Rule*>& rules);
  void leave_out_breaches();

  void assignments(const UpdateStatement& statement);
  void assigned(const Assignment& assignment);
  void checked_row(const UpdateStatement& statement, const std::vector<const Rule*>& rules);
  std::vector<const Rule*> rules_of(const UpdateStatement& statement) const;
  void joined_tables(const TableReference& reference, const Source& target);
  void joined_where(const UpdateStatement& statement);

  /// The error for Null in the field; 0 where Null may stand.
  error_number::Number null_error(const FieldDefinition& field) const noexcept;
  bool may_violate_index(const UpdateStatement& statement) const;
  void store(const FieldDefinition& field, const Expression& given);
  void checked_for_null(const FieldDefinition& field, StoreMode mode, const Given& given, const Writer& write_value);
  void convert(const FieldDefinition& field, const Given& given, StoreMode mode, const Writer& write_value);
  void convert_text(const FieldDefinition& field, const Given& given, StoreMode mode, const Writer& write_value);

  SqlText sql_;
  QueryWriter queries_{sql_};
  const TableDefinition& table_;
  struct FieldRule {
    const FieldDefinition* field = nullptr;  ///< null for the table's own rule
    Rule rule;
  };
  std::vector<FieldRule> rules_;
  /// Of an UPDATE over a join: the other tables, and the conditions of the joins.
  std::vector<const TableReference*> others_;
  std::vector<const Expression*> conditions_;
};

}  // namespace engine::embedded::jet_sql

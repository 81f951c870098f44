// A recordset over a table or a query. It shows rows as they were when they were read; its own changes show at once.
// Where its rows are those of one table, it can be updated, by the rules that the table has at that time.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "database/engine/embedded/recordset_source.h"
#include "database/engine/embedded/row_reader.h"
#include "database/engine/embedded/session.h"
#include "database/engine/engine.h"

namespace engine::embedded {

class EmbeddedRecordset : public Recordset {
 public:
  EmbeddedRecordset(std::shared_ptr<Session> session, RecordsetSource source);

  bool bof() const override;
  bool eof() const override;
  std::int32_t record_count() const override;
  bool updatable() const override;
  void move_first() override;
  void move_last() override;
  void move_next() override;
  void move_previous() override;
  void add_new() override;
  void edit() override;
  void update() override;
  void cancel_update() override;
  void delete_row() override;
  void close() override;

  std::int32_t field_count() const override;
  std::string field_name(std::int32_t position) const override;
  DataType field_type(std::int32_t position) const override;
  Value value(std::int32_t position) const override;
  Value value(std::string_view field) const override;
  void set_value(std::string_view field, const Value& value) override;

 private:
  enum class Place { BeforeFirst, Row, AfterLast };
  enum class Editing { None, Adding, Changing };

  /// Raises 3420 where the recordset is closed or its table is known to be gone.
  void require_open() const;
  bool has_rows() const;
  /// Raises 3021 where no row is current, 3167 where the row was deleted.
  void require_row() const;
  void begin_edit(Editing editing);
  std::size_t column(std::string_view name) const;
  const jet_sql::ResultColumn& column_at(std::int32_t position) const;
  void go_to(std::size_t row);

  /// Takes over changes of the table's layout. Raises 3420 where the table is gone. Returns true where the layout is
  /// another one.
  bool adopt_layout();
  void bind_columns();
  void fill_defaults();
  /// Checks the new values against the table as it is now. Also raises 3265 where a field that was given a value is
  /// gone.
  void check_edited();
  void check_nulls() const;
  std::int64_t insert_row();
  void update_row();
  void check_rules(std::int64_t row_id);
  std::string where_row() const;
  /// The row as the query shows it now, where the query has computed columns; else as it was edited.
  std::vector<Value> row_after_update(std::int64_t row_id) const;
  PooledStatement row_statement() const;

  std::shared_ptr<Session> session_;
  std::vector<jet_sql::ResultColumn> columns_;
  TablePointer table_;
  mutable std::shared_ptr<const StoredCatalogue> known_;  ///< the catalogue in which the table was last seen
  std::vector<std::int64_t> column_fields_;               ///< for each column the field's identity, 0 for none
  std::vector<std::optional<std::size_t>> table_fields_;  ///< for each column the field's present position in the table
  std::string row_sql_;
  RowReader reader_;
  std::optional<std::int32_t> count_;
  bool open_ = true;
  Place place_ = Place::BeforeFirst;
  std::size_t row_ = 0;
  std::size_t visited_ = 0;  ///< number of rows up to the last one that was current
  std::size_t deleted_ = 0;
  Editing editing_ = Editing::None;
  /// The values that were written, by the field's identity. They stay while a field is renamed or gone, since a
  /// rollback may bring the field back. Fields without an entry keep their value.
  std::map<std::int64_t, Value> edited_;
  std::set<std::size_t> assigned_;  ///< columns that were given a value
};

}  // namespace engine::embedded

// The object model of the database engine: the few operations that the program needs, under the names of the engine's
// own documentation. Two implementations stand behind it, the embedded one and the automation objects.
//
// Every failing call raises support::RuntimeError with the engine's number and leaves database and object as they were.
// Objects of a database must not be used after it was closed or destroyed: their calls raise 3420 (object invalid).
// Names are compared without regard to case; texts are UTF-8.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "database/engine/value.h"
#include "support/error.h"

namespace engine {

class FileCare;

/// Field types, with the engine's numbers.
enum class DataType : std::int16_t {
  Boolean = 1,
  Byte = 2,
  Integer = 3,
  Long = 4,
  Single = 6,
  Double = 7,
  Date = 8,
  Text = 10,
  Memo = 12,
};

constexpr bool is_text(DataType type) noexcept { return type == DataType::Text || type == DataType::Memo; }

/// Field attributes, with the engine's numbers; they are a bit set.
inline constexpr std::int32_t attribute_fixed = 1;
inline constexpr std::int32_t attribute_variable = 2;
inline constexpr std::int32_t attribute_auto_increment = 16;

/// Collating locale string and version option for a new database.
inline constexpr std::string_view locale_general = ";LANGID=0x0409;CP=1252;COUNTRY=0";
inline constexpr std::int32_t version_30 = 32;

/// A field of a table or of an index. Properties may be set before and, except type, after appending; a change of an
/// appended field's property takes effect at once. Setting a property that the engine refuses raises and changes
/// nothing.
class Field {
 public:
  virtual ~Field() = default;
  virtual std::string name() const = 0;
  /// Renames an appended field.
  virtual void set_name(std::string_view name) = 0;
  virtual DataType type() const = 0;
  /// Characters for Text; the storage size in bytes for numbers (1, 2, 4, 8), 0 for Memo.
  virtual std::int32_t size() const = 0;
  /// Only before appending (3219 afterwards).
  virtual void set_size(std::int32_t size) = 0;
  virtual std::int32_t attributes() const = 0;
  virtual void set_attributes(std::int32_t attributes) = 0;
  /// An expression as text; "" is no default.
  virtual std::string default_value() const = 0;
  virtual void set_default_value(std::string_view expression) = 0;
  virtual bool required() const = 0;
  virtual void set_required(bool required) = 0;
  virtual bool allow_zero_length() const = 0;
  virtual void set_allow_zero_length(bool allow) = 0;
  /// From 0; fields of equal positions stand in the order of appending.
  virtual std::int16_t ordinal_position() const = 0;
  virtual void set_ordinal_position(std::int16_t position) = 0;
  /// Rule and text are kept; the embedded engine checks no value against them.
  virtual std::string validation_rule() const = 0;
  virtual void set_validation_rule(std::string_view rule) = 0;
  virtual std::string validation_text() const = 0;
  virtual void set_validation_text(std::string_view text) = 0;
};

/// The fields of a table definition or an index, in the order of appending.
class Fields {
 public:
  virtual ~Fields() = default;
  virtual std::int32_t count() const = 0;
  /// 3265 where there is none.
  virtual std::shared_ptr<Field> item(std::int32_t position) const = 0;
  virtual std::shared_ptr<Field> item(std::string_view name) const = 0;
  /// 3191 where a field of this name exists, 3190 for the 256th, 3125 for a name that is none, 3259 for a type that is
  /// none, 3219 for a field that is appended already, a second AutoNumber, or a field of another engine. In rows that
  /// are there it is Null, and a Yes/No is No; an AutoNumber counts on from those that the table gave before, or
  /// from 1.
  virtual void append(const std::shared_ptr<Field>& field) = 0;
  /// Deletes a field with its values; 3265 where there is none, 3280 where an index uses it, 3264 for the only one.
  virtual void remove(std::string_view name) = 0;
};

/// An index of a table. Properties and fields may be set until it is appended (3219 afterwards).
class Index {
 public:
  virtual ~Index() = default;
  virtual std::string name() const = 0;
  /// A primary index is unique and required, too.
  virtual bool primary() const = 0;
  virtual void set_primary(bool primary) = 0;
  virtual bool unique() const = 0;
  virtual void set_unique(bool unique) = 0;
  virtual bool required() const = 0;
  virtual void set_required(bool required) = 0;
  /// This and "clustered" are kept; the embedded engine does nothing else for them.
  virtual bool ignore_nulls() const = 0;
  virtual void set_ignore_nulls(bool ignore) = 0;
  virtual bool clustered() const = 0;
  virtual void set_clustered(bool clustered) = 0;
  /// A field of the index, by the name of the table's field; to be appended to fields().
  virtual std::shared_ptr<Field> create_field(std::string_view name) = 0;
  virtual std::shared_ptr<Field> create_field(std::string_view name, DataType type) = 0;
  virtual Fields& fields() = 0;
};

/// The indexes of a table definition, in the order of appending.
class Indexes {
 public:
  virtual ~Indexes() = default;
  virtual std::int32_t count() const = 0;
  /// 3265 where there is none.
  virtual std::shared_ptr<Index> item(std::int32_t position) const = 0;
  virtual std::shared_ptr<Index> item(std::string_view name) const = 0;
  /// 3284 where an index of this name exists, 3283 for a second primary one, 3264 for one without fields; 3022 where a
  /// unique one meets duplicate rows, 3058 where a required one meets Null. An index of a table that is not appended
  /// yet may name fields that are created later; 3409 when they are still missing at TableDefs append.
  virtual void append(const std::shared_ptr<Index>& index) = 0;
  /// 3265 where there is none.
  virtual void remove(std::string_view name) = 0;
};

/// A table. Like a field's, its properties may be set before and after appending; those below the name are kept and
/// change nothing else.
class TableDef {
 public:
  virtual ~TableDef() = default;
  virtual std::string name() const = 0;
  /// Renames an appended table; 3010 where the name is taken.
  virtual void set_name(std::string_view name) = 0;
  virtual std::int32_t attributes() const = 0;
  virtual void set_attributes(std::int32_t attributes) = 0;
  virtual std::string connect() const = 0;
  virtual void set_connect(std::string_view connect) = 0;
  virtual std::string source_table_name() const = 0;
  virtual void set_source_table_name(std::string_view name) = 0;
  virtual std::string validation_rule() const = 0;
  virtual void set_validation_rule(std::string_view rule) = 0;
  virtual std::string validation_text() const = 0;
  virtual void set_validation_text(std::string_view text) = 0;
  /// A field or an index for this table, to be appended to fields() or indexes(). `size` is in characters and counts
  /// for Text alone; 1 to 255, and 255 where it is not given or 0.
  virtual std::shared_ptr<Field> create_field(std::string_view name, DataType type) = 0;
  virtual std::shared_ptr<Field> create_field(std::string_view name, DataType type, std::int32_t size) = 0;
  virtual std::shared_ptr<Index> create_index(std::string_view name) = 0;
  virtual Fields& fields() = 0;
  virtual Indexes& indexes() = 0;
};

/// The user's tables, in the order of appending.
class TableDefs {
 public:
  virtual ~TableDefs() = default;
  virtual std::int32_t count() const = 0;
  /// 3265 where there is none.
  virtual std::shared_ptr<TableDef> item(std::int32_t position) const = 0;
  virtual std::shared_ptr<TableDef> item(std::string_view name) const = 0;
  /// With its fields and indexes, all or nothing. 3010 where a table of this name exists, 3264 for a table without
  /// fields, 3125 for a name that is none.
  virtual void append(const std::shared_ptr<TableDef>& table) = 0;
  /// Deletes a table with its rows; 3265 where there is none.
  virtual void remove(std::string_view name) = 0;
};

/// Rows of a table or of a query. A row that cannot be worked out raises its error when it is reached, not before.
/// Reading a field, edit() and the move calls on no rows raise 3021; update() and writing a field without add_new() or
/// edit() raise 3020. Where the table is gone, everything but close() raises 3420, also when another one has its name.
class Recordset {
 public:
  virtual ~Recordset() = default;
  virtual bool bof() const = 0;
  virtual bool eof() const = 0;
  /// The full count for a table name; for a query 0, or 1 where there are rows, until move_last().
  virtual std::int32_t record_count() const = 0;
  virtual bool updatable() const = 0;
  virtual void move_first() = 0;
  virtual void move_last() = 0;
  virtual void move_next() = 0;
  virtual void move_previous() = 0;
  /// Starts a new row with its defaults. The AutoNumber can be read at once and is not given again, whether the row is
  /// stored or not; outside of a transaction giving it is a change of its own (3045 where another handle is writing).
  /// The row that was current is current again after update().
  virtual void add_new() = 0;
  /// Starts a change of the current row. This, add_new() and delete_row() raise 3027 where updatable() is false or the
  /// file is read-only; the moves give an edit up without a word.
  virtual void edit() = 0;
  /// Stores the row being added or edited, by the rules that the table has now; on failure the edit stays open and the
  /// file is unchanged: 3314 where a required field is Null, 3058 where one of a primary index is, 3022 for a
  /// duplicate, 3167 for a row that is gone, 3265 where a field is gone or has another name that was given a value.
  virtual void update() = 0;
  virtual void cancel_update() = 0;
  /// Deletes the current row ("Delete" of the engine). Until the next move there is none: reading it raises 3167, as
  /// deleting raises for a row that is gone already. A move that finds no row left makes both bof() and eof() true.
  virtual void delete_row() = 0;
  virtual void close() = 0;

  virtual std::int32_t field_count() const = 0;
  /// Positions count from 0; 3265 for an unknown position or name.
  virtual std::string field_name(std::int32_t position) const = 0;
  virtual DataType field_type(std::int32_t position) const = 0;
  /// Of the row that is being added or edited, else of the current one.
  virtual Value value(std::int32_t position) const = 0;
  virtual Value value(std::string_view field) const = 0;
  /// Converts to the field's type at once: 3421 where that cannot be or the value is out of range, 3163 where a text is
  /// too long, 3315 where it is empty and the field takes none, 3164 for an AutoNumber or a column that is no field,
  /// 3265 for a field that was renamed since. Null in a Yes/No is No.
  virtual void set_value(std::string_view field, const Value& value) = 0;
};

/// An open database file; closed on destruction.
class Database {
 public:
  virtual ~Database() = default;
  /// The path that it was opened by.
  virtual std::string name() const = 0;
  /// Rolls an open transaction back. Closing twice does nothing.
  virtual void close() = 0;
  /// 3031 where the old password is wrong or the new one has more than 20 characters; "" clears. 3045 where the file is
  /// open elsewhere, 3246 in a transaction, 3251 from the embedded engine where the file has a second name in a folder.
  virtual void new_password(std::string_view old_password, std::string_view new_password) = 0;
  /// A new table, to be appended to table_defs().
  virtual std::shared_ptr<TableDef> create_table_def(std::string_view name) = 0;
  virtual TableDefs& table_defs() = 0;
  /// The rows of a table, or of a SELECT statement; 3078 where it is neither, and what else the statement raises.
  virtual std::unique_ptr<Recordset> open_recordset(std::string_view source) = 0;
  /// The same for rows that are read once, from the first to the last: the embedded engine keeps none of those that lie
  /// behind, so that a long result takes no more memory than a short one. There, moving anywhere but on raises 3219,
  /// and updatable() is false; other engines give what open_recordset() gives.
  virtual std::unique_ptr<Recordset> open_forward_only(std::string_view source) { return open_recordset(source); }
  /// One statement that changes data or layout; 3065 for a query, 3142 for text after its end.
  virtual void execute(std::string_view sql) = 0;
  /// Rows changed by the last execute(); 0 where it failed.
  virtual std::int32_t records_affected() const = 0;

  /// One transaction per handle, not nested: 3219 for a second one, 3034 for a commit or rollback without one. A commit
  /// that fails has rolled back.
  virtual void begin_transaction() = 0;
  virtual void commit_transaction() = 0;
  virtual void rollback_transaction() = 0;

  /// Copies what is committed to a new file of the same password and checks the copy; on failure no file is left. 3204
  /// where a file is there, 3044 where its folder is not, 3343 where the copy does not hold together, 3246 in a
  /// transaction (the embedded engine: of a handle that may write), 3251 from the automation engine unless the database
  /// was opened exclusively.
  virtual void save_copy(std::string_view path) = 0;

  /// What the engine does for the file as a whole; null where it does nothing of the kind. Lives as long as this.
  virtual FileCare* care() { return nullptr; }
};

/// Openings that an engine prepares while the program works on the files before them. Files are passed in the order in
/// which they were announced.
class OpeningsAhead {
 public:
  virtual ~OpeningsAhead() = default;
  /// False while as many files are announced as are worth preparing at once.
  virtual bool has_room() const = 0;
  /// Prepares the opening of a file. What is wrong with it is told by its opening; an empty path announces a file that
  /// will not be opened.
  virtual void announce(std::string_view path) = 0;
  /// Done with the file that was announced first: what was prepared for it is wiped.
  virtual void pass() = 0;
};

/// Opens and creates database files. Paths are Windows paths.
class Engine {
 public:
  virtual ~Engine() = default;
  /// A new, empty database without password. 3204 where the file exists, 3044 where its folder does not. Of the
  /// embedded engine nothing is on the disk before the first change is committed, and a handle closed before that
  /// leaves no file.
  virtual std::unique_ptr<Database> create_database(std::string_view path, std::string_view locale,
                                                    std::int32_t version) = 0;
  /// `connect` is "" or "MS Access;pwd=" + password. 3024 missing file, 3031 wrong password, 3343 no database,
  /// 3045 in use elsewhere (after the busy time), 3051/3027 where rights are missing.
  virtual std::unique_ptr<Database> open_database(std::string_view path, bool exclusive, bool read_only,
                                                  std::string_view connect) = 0;
  /// For many files that are opened with this connect string one after the other: the embedded engine derives their
  /// keys ahead, on all processors. Null where an engine has nothing to prepare.
  virtual std::unique_ptr<OpeningsAhead> openings_ahead(std::string_view connect) {
    static_cast<void>(connect);
    return nullptr;
  }
};

/// Runs its transaction unless committed: rolls back on destruction.
class Transaction {
 public:
  explicit Transaction(Database& database) : database_(&database) { database.begin_transaction(); }
  ~Transaction() {
    if (!database_) return;
    try {
      database_->rollback_transaction();
    } catch (const support::RuntimeError&) {
      // The database was closed or has rolled back by itself: nothing of the transaction is left either way.
    }
  }
  Transaction(const Transaction&) = delete;
  Transaction& operator=(const Transaction&) = delete;
  void commit() {
    database_->commit_transaction();
    database_ = nullptr;
  }

 private:
  Database* database_;
};

}  // namespace engine

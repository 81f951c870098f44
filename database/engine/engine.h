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

/// Field types. The numbers are the engine's.
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

/// Field attributes, a set of bits. The numbers are the engine's.
inline constexpr std::int32_t attribute_fixed = 1;
inline constexpr std::int32_t attribute_variable = 2;
inline constexpr std::int32_t attribute_auto_increment = 16;

/// The locale string and version option that a new database is created with.
inline constexpr std::string_view locale_general = ";LANGID=0x0409;CP=1252;COUNTRY=0";
inline constexpr std::int32_t version_30 = 32;

/// A field of a table or of an index. Its properties may be set before and, except the type, after appending. A change
/// to a property of an appended field takes effect at once. Setting a property that the engine refuses raises an error
/// and changes nothing.
class Field {
 public:
  virtual ~Field() = default;
  virtual std::string name() const = 0;
  /// Renames an appended field.
  virtual void set_name(std::string_view name) = 0;
  virtual DataType type() const = 0;
  /// Characters of a Text; the storage size in bytes of a number (1, 2, 4, 8); 0 for a Memo.
  virtual std::int32_t size() const = 0;
  /// Only before appending; raises 3219 afterwards.
  virtual void set_size(std::int32_t size) = 0;
  virtual std::int32_t attributes() const = 0;
  virtual void set_attributes(std::int32_t attributes) = 0;
  /// An expression as text; "" where there is no default.
  virtual std::string default_value() const = 0;
  virtual void set_default_value(std::string_view expression) = 0;
  virtual bool required() const = 0;
  virtual void set_required(bool required) = 0;
  virtual bool allow_zero_length() const = 0;
  virtual void set_allow_zero_length(bool allow) = 0;
  /// Counts from 0. Fields of equal positions stand in the order of appending.
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
  /// Raises 3265 where there is no such field.
  virtual std::shared_ptr<Field> item(std::int32_t position) const = 0;
  virtual std::shared_ptr<Field> item(std::string_view name) const = 0;
  /// Raises 3191 where a field of this name exists, 3190 for the 256th field, 3125 for an invalid name, 3259 for an
  /// invalid type, 3219 for a field that is appended already, for a second AutoNumber, and for a field of another
  /// engine. In existing rows the field is Null; a Yes/No is No; an AutoNumber counts on from the numbers that the
  /// table gave before, or from 1.
  virtual void append(const std::shared_ptr<Field>& field) = 0;
  /// Deletes a field with its values. Raises 3265 where there is no such field, 3280 where an index uses it, 3264 for
  /// the only field.
  virtual void remove(std::string_view name) = 0;
};

/// An index of a table. Its properties and fields may be set until it is appended; setting them raises 3219 afterwards.
class Index {
 public:
  virtual ~Index() = default;
  virtual std::string name() const = 0;
  /// A primary index is also unique and required.
  virtual bool primary() const = 0;
  virtual void set_primary(bool primary) = 0;
  virtual bool unique() const = 0;
  virtual void set_unique(bool unique) = 0;
  virtual bool required() const = 0;
  virtual void set_required(bool required) = 0;
  /// This property and "clustered" are kept; the embedded engine does nothing else with them.
  virtual bool ignore_nulls() const = 0;
  virtual void set_ignore_nulls(bool ignore) = 0;
  virtual bool clustered() const = 0;
  virtual void set_clustered(bool clustered) = 0;
  /// Creates a field of the index, by the name of the table's field. It must be appended to fields().
  virtual std::shared_ptr<Field> create_field(std::string_view name) = 0;
  virtual std::shared_ptr<Field> create_field(std::string_view name, DataType type) = 0;
  virtual Fields& fields() = 0;
};

/// The indexes of a table definition, in the order of appending.
class Indexes {
 public:
  virtual ~Indexes() = default;
  virtual std::int32_t count() const = 0;
  /// Raises 3265 where there is no such index.
  virtual std::shared_ptr<Index> item(std::int32_t position) const = 0;
  virtual std::shared_ptr<Index> item(std::string_view name) const = 0;
  /// Raises 3284 where an index of this name exists, 3283 for a second primary index, 3264 for an index without fields,
  /// 3022 where a unique index meets duplicate rows, 3058 where a required one meets Null. An index of a table that is
  /// not appended yet may name fields that are created later; appending the table raises 3409 where they are still
  /// missing.
  virtual void append(const std::shared_ptr<Index>& index) = 0;
  /// Raises 3265 where there is no such index.
  virtual void remove(std::string_view name) = 0;
};

/// A table. Its properties may be set before and after appending, as those of a field. The properties below the name
/// are kept and have no other effect.
class TableDef {
 public:
  virtual ~TableDef() = default;
  virtual std::string name() const = 0;
  /// Renames an appended table. Raises 3010 where the name is taken.
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
  /// Creates a field or an index for this table, which must be appended to fields() or indexes(). `size` is in
  /// characters and counts only for Text: 1 to 255; 255 where it is not given or 0.
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
  /// Raises 3265 where there is no such table.
  virtual std::shared_ptr<TableDef> item(std::int32_t position) const = 0;
  virtual std::shared_ptr<TableDef> item(std::string_view name) const = 0;
  /// Appends the table with its fields and indexes, all or nothing. Raises 3010 where a table of this name exists, 3264
  /// for a table without fields, 3125 for an invalid name.
  virtual void append(const std::shared_ptr<TableDef>& table) = 0;
  /// Deletes a table with its rows. Raises 3265 where there is no such table.
  virtual void remove(std::string_view name) = 0;
};

/// Rows of a table or of a query. A row that cannot be computed raises its error when it is reached, not before.
/// Reading a field, edit() and the move calls raise 3021 where there are no rows. update() and writing a field raise
/// 3020 without add_new() or edit(). Where the table is gone, everything except close() raises 3420, even if another
/// table has its name now.
class Recordset {
 public:
  virtual ~Recordset() = default;
  virtual bool bof() const = 0;
  virtual bool eof() const = 0;
  /// For a table name the full count. For a query 0, or 1 where there are rows, until move_last().
  virtual std::int32_t record_count() const = 0;
  virtual bool updatable() const = 0;
  virtual void move_first() = 0;
  virtual void move_last() = 0;
  virtual void move_next() = 0;
  virtual void move_previous() = 0;
  /// Starts a new row with its defaults. Its AutoNumber can be read at once, and is not given again, whether the row is
  /// stored or not. Outside of a transaction, giving the number is a change of its own (3045 where another handle is
  /// writing). After update(), the row that was current before is current again.
  virtual void add_new() = 0;
  /// Starts a change of the current row. This, add_new() and delete_row() raise 3027 where updatable() is false or the
  /// file is read-only. A move discards an open edit silently.
  virtual void edit() = 0;
  /// Stores the row that is being added or edited, by the rules that the table has now. On failure the edit stays open
  /// and the file is unchanged. Raises 3314 where a required field is Null, 3058 where a field of a primary index is
  /// Null, 3022 for a duplicate, 3167 for a row that is gone, 3265 where a field that was given a value is gone or
  /// renamed.
  virtual void update() = 0;
  virtual void cancel_update() = 0;
  /// Deletes the current row (the engine's "Delete"). Until the next move there is no current row, and reading it
  /// raises 3167. Deleting a row that is gone already raises 3167, too. A move that finds no row left makes both bof()
  /// and eof() true.
  virtual void delete_row() = 0;
  virtual void close() = 0;

  virtual std::int32_t field_count() const = 0;
  /// Positions count from 0. Raises 3265 for an unknown position or name.
  virtual std::string field_name(std::int32_t position) const = 0;
  virtual DataType field_type(std::int32_t position) const = 0;
  /// The value in the row that is being added or edited, else in the current row.
  virtual Value value(std::int32_t position) const = 0;
  virtual Value value(std::string_view field) const = 0;
  /// Converts to the field's type at once. Raises 3421 where that is impossible or the value is out of range, 3163
  /// where a text is too long, 3315 where it is empty and the field takes no empty text, 3164 for an AutoNumber or a
  /// column that is no field, 3265 for a field that was renamed in the meantime. Null in a Yes/No is No.
  virtual void set_value(std::string_view field, const Value& value) = 0;
};

/// An open database file. The destructor closes it.
class Database {
 public:
  virtual ~Database() = default;
  /// The path by which it was opened.
  virtual std::string name() const = 0;
  /// Rolls an open transaction back. Closing twice does nothing.
  virtual void close() = 0;
  /// Raises 3031 where the old password is wrong or the new one has more than 20 characters; "" removes the password.
  /// Raises 3045 where the file is open elsewhere, 3246 in a transaction; in the embedded engine 3251 where the file
  /// has a second name in a folder.
  virtual void new_password(std::string_view old_password, std::string_view new_password) = 0;
  /// Creates a table, which must be appended to table_defs().
  virtual std::shared_ptr<TableDef> create_table_def(std::string_view name) = 0;
  virtual TableDefs& table_defs() = 0;
  /// The rows of a table, or of a SELECT statement. Raises 3078 where it is neither, and the errors of the statement.
  virtual std::unique_ptr<Recordset> open_recordset(std::string_view source) = 0;
  /// Gives rows that are read once, from the first to the last. The embedded engine forgets the rows behind the current
  /// one, so a long result takes no more memory than a short one. There, any move except to the next row raises 3219,
  /// and updatable() is false. Other engines give what open_recordset() gives.
  virtual std::unique_ptr<Recordset> open_forward_only(std::string_view source) { return open_recordset(source); }
  /// Runs one statement that changes data or layout. Raises 3065 for a query, 3142 for text after its end.
  virtual void execute(std::string_view sql) = 0;
  /// The number of rows that the last execute() changed; 0 where it failed.
  virtual std::int32_t records_affected() const = 0;

  /// One transaction for each handle, not nested. Raises 3219 for a second one, 3034 for a commit or rollback without
  /// one. A commit that fails has rolled back.
  virtual void begin_transaction() = 0;
  virtual void commit_transaction() = 0;
  virtual void rollback_transaction() = 0;

  /// Copies what is committed to a new file with the same password and checks the copy. On failure no file is left.
  /// Raises 3204 where the file exists, 3044 where its folder does not exist, 3343 where the copy is inconsistent, 3246
  /// in a transaction (in the embedded engine: of a handle that may write), and in the automation engine 3251 unless
  /// the database was opened exclusively.
  virtual void save_copy(std::string_view path) = 0;

  /// What the engine can do for the file as a whole; null where it can do nothing of the kind. Lives as long as this
  /// object.
  virtual FileCare* care() { return nullptr; }
};

/// Openings that an engine prepares while the program works on the files before them. Files must be passed in the order
/// in which they were announced.
class OpeningsAhead {
 public:
  virtual ~OpeningsAhead() = default;
  /// False while as many files are announced as are worth preparing at once.
  virtual bool has_room() const = 0;
  /// Prepares the opening of a file. If something is wrong with the file, its opening reports that. An empty path
  /// announces a file that will not be opened.
  virtual void announce(std::string_view path) = 0;
  /// Says that the file that was announced first is done with. What was prepared for it is wiped.
  virtual void pass() = 0;
};

/// Opens and creates database files. Paths are Windows paths.
class Engine {
 public:
  virtual ~Engine() = default;
  /// Creates an empty database without password. Raises 3204 where the file exists, 3044 where its folder does not
  /// exist. With the embedded engine, nothing is on the disk before the first change is committed; a handle that is
  /// closed before that leaves no file.
  virtual std::unique_ptr<Database> create_database(std::string_view path, std::string_view locale,
                                                    std::int32_t version) = 0;
  /// `connect` is "" or "MS Access;pwd=" + password. Raises 3024 for a missing file, 3031 for a wrong password, 3343
  /// where the file is no database, 3045 where it is in use elsewhere (after the busy time), 3051/3027 where rights are
  /// missing.
  virtual std::unique_ptr<Database> open_database(std::string_view path, bool exclusive, bool read_only,
                                                  std::string_view connect) = 0;
  /// For many files that are opened one after the other with this connect string. The embedded engine derives their
  /// keys ahead, on all processors. Null where an engine has nothing to prepare.
  virtual std::unique_ptr<OpeningsAhead> openings_ahead(std::string_view connect) {
    static_cast<void>(connect);
    return nullptr;
  }
};

/// Runs a transaction. The destructor rolls it back unless it was committed.
class Transaction {
 public:
  explicit Transaction(Database& database) : database_(&database) { database.begin_transaction(); }
  ~Transaction() {
    if (!database_) return;
    try {
      database_->rollback_transaction();
    } catch (const support::RuntimeError&) {
      // The database was closed or has rolled back by itself. Either way nothing of the transaction is left.
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

// A table and a recordset as simple as possible: maps in memory, without files, locks or statements. The engine is
// compared with them.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "database/engine/engine.h"

namespace engine::test::model {

/// Rows, fields and tables have identities, which are never used twice even if names are.
int new_identity();

struct PlainField {
  int identity = new_identity();
  std::string name;
  DataType type = DataType::Text;
  bool numbered = false;
  bool required = false;
  bool takes_empty = false;
};

/// Values by the field's identity.
using Values = std::map<int, Value>;

struct PlainRow {
  int identity = new_identity();
  Values values;
};

/// The AutoNumber of a row before the engine has told its number.
inline constexpr std::int32_t untold_number = -1;
/// The most characters of a Text field here.
inline constexpr std::size_t text_size = 10;

struct PlainTable {
  int identity = new_identity();
  std::vector<PlainField> fields;
  std::vector<PlainRow> rows;
  std::set<std::int32_t> numbers;  ///< AutoNumbers that were ever given
  std::string connect;
  std::string source_name;

  /// The field; null if there is none.
  PlainField* field(std::string_view name);
  const PlainField* field(int wanted) const;
  /// True if the field exists and still has this name.
  bool shows(int wanted, std::string_view name) const;
  PlainRow* row(int wanted);
  const PlainField* numbered_field() const;
  /// The values of a row for which none are given; its AutoNumber is untold.
  Values new_values() const;
  /// True if another row has this value in the unique field.
  bool is_taken(const Value& unique_value, int row) const;
};

/// Error numbers that a call may raise; if empty, it must succeed.
using Errors = std::set<int>;

/// Puts into `stored` what the field holds after `given` was stored in it. Returns the possible errors if it cannot be
/// stored.
Errors store(const PlainField& field, const Value& given, Value& stored);

/// The rows of one recordset, as it shows them.
struct PlainRecordset {
  enum class Place { Before, Row, After };
  enum class Editing { None, Adding, Changing };
  struct Column {
    std::string name;
    int field = 0;
  };
  struct Shown {
    int row = 0;
    Values values;
    bool deleted = false;
    /// Fields that did not exist any more when the row was stored: they show what was written, or nothing.
    std::set<int> unsure;
  };

  PlainRecordset(const PlainTable& table, const std::vector<std::string>& names);

  std::size_t remaining() const;
  bool bof() const { return place == Place::Before || (place == Place::After && remaining() == 0); }
  bool eof() const { return place == Place::After || (place == Place::Before && remaining() == 0); }
  /// 3021 or 3167 if no row can be read.
  Errors row_errors() const;
  Errors move_to_end(bool last);
  Errors move_by_one(bool forward);

  int table = 0;
  std::vector<Column> columns;
  std::vector<Shown> rows;
  Place place = Place::Before;
  std::size_t at = 0;
  Editing editing = Editing::None;
  Values edited;
  std::set<int> assigned;  ///< the fields among them that the user set
};

}  // namespace engine::test::model

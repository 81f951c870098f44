#include "database/engine/embedded/engine_error.h"

#include <algorithm>
#include <array>
#include <string>

namespace engine::embedded {
namespace {

struct ErrorText {
  int number;
  std::string_view text;  ///< "|" is the place of a name
};

constexpr std::array error_texts{
    ErrorText{3001, "Invalid argument."},
    ErrorText{3010, "Table '|' already exists."},
    ErrorText{3020, "Update or CancelUpdate without AddNew or Edit."},
    ErrorText{3021, "No current record."},
    ErrorText{3022, "The changes would create duplicate values in an index or primary key."},
    ErrorText{3024, "The database file could not be found."},
    ErrorText{3027, "Cannot update. Database or object is read-only."},
    ErrorText{3031, "Not a valid password."},
    ErrorText{3034, "You tried to commit or rollback a transaction without first beginning a transaction."},
    ErrorText{3043, "Disk or network error."},
    ErrorText{3044, "The folder of the database file is not a valid path."},
    ErrorText{3045, "Could not use the database file; it is already in use."},
    ErrorText{3051,
              "The database file cannot be opened: it is opened exclusively by another user, or you need permission."},
    ErrorText{3058, "Index or primary key cannot contain a Null value."},
    ErrorText{3065, "Cannot execute a select query."},
    ErrorText{3078, "The input table or query '|' cannot be found."},
    ErrorText{3125, "'|' is not a valid name."},
    ErrorText{3163, "The field '|' is too small to accept the amount of data you attempted to add."},
    ErrorText{3164, "The field '|' cannot be updated."},
    ErrorText{3167, "Record is deleted."},
    ErrorText{3190, "Too many fields defined."},
    ErrorText{3191, "Cannot define field '|' more than once."},
    ErrorText{3204, "Database already exists."},
    ErrorText{3211, "The table '|' is in use and cannot be changed."},
    ErrorText{3219, "Invalid operation."},
    ErrorText{3246, "Operation is not supported in transactions."},
    ErrorText{3251, "Operation is not supported for this type of object."},
    ErrorText{3259, "Invalid field data type."},
    ErrorText{3264, "No field defined; cannot append TableDef or Index."},
    ErrorText{3265, "Item '|' not found in this collection."},
    ErrorText{3280, "Cannot delete the field '|' that is part of an index."},
    ErrorText{3283, "Primary key already exists."},
    ErrorText{3284, "Index '|' already exists."},
    ErrorText{3314, "The field '|' cannot contain a Null value because the Required property is set to True."},
    ErrorText{3315, "Field '|' cannot be a zero-length string."},
    ErrorText{3343, "Unrecognized database format."},
    ErrorText{3372, "No such index '|'."},
    ErrorText{3376, "Table '|' does not exist."},
    ErrorText{3381, "There is no field named '|'."},
    ErrorText{3409, "Invalid field definition '|' in definition of index or relationship."},
    ErrorText{3420, "Object invalid or no longer set."},
    ErrorText{3421, "Data type conversion error in field '|'."},
};

}  // namespace

support::RuntimeError engine_error(int number, std::string_view name) {
  const auto* found = std::ranges::find(error_texts, number, &ErrorText::number);
  std::string text{found == error_texts.end() ? std::string_view{"Database error."} : found->text};
  if (const std::size_t place = text.find('|'); place != std::string::npos) text.replace(place, 1, name);
  return support::RuntimeError(number, text);
}

void raise(int number, std::string_view name) { throw engine_error(number, name); }

}  // namespace engine::embedded

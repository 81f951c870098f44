// The table of the patient index database: one row per patient, without an index. The diary's own creation prepares a
// memo field between DateOfBirth and ExternalID and never appends it; so there is none here.
#include "database/schema/schema.h"
#include "database/schema/words.h"

namespace database::schema {
namespace {

using namespace words;

// clang-format off
constexpr FieldRow index_fields[] = {
    {"ID",          Long,    0,   increment},
    {"Name",        Text,    100, variable, "",  no, yes},
    {"FirstName",   Text,    100, variable, "",  no, yes},
    {"DiabetesTyp", Integer, 0,   variable, "0", no, yes},
    {"Therapy",     Integer, 0,   variable, "0", no, yes},
    {"DateOfBirth", Date,    0,   fixed,    "0", no},
    {"ExternalID",  Text,    100, variable, "",  no, yes},
    {"HarbinoxID",  Long,    0,   variable, "",  no, yes},
};
// clang-format on

constexpr TableRow index_row{"index", index_fields, {}};

}  // namespace

const TableRow& index_table() { return index_row; }

}  // namespace database::schema

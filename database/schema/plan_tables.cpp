// Therapy plans with their items, and day templates with their entries.
#include "database/schema/schema.h"
#include "database/schema/words.h"

namespace database::schema {
namespace {

using namespace words;

// clang-format off
constexpr FieldRow therapieplan_fields[] = {
    {"ID",      Long,    0,   increment, none, none, none, 0},
    {"vDate",   Date,    0,   fixed,     "",   no,   none, 2},
    {"desc",    Text,    255, variable,  "",   no,   yes,  5},
    {"Type",    Integer, 0,   fixed,     "",   no,   none, 6},
    {"Comment", Text,    255, variable,  "",   no,   yes,  8},
};
constexpr IndexRow therapieplan_indexes[] = {{"vDate", "vDate"}};

constexpr FieldRow therapieplan_details_fields[] = {
    {"ID",        Long,    0,   increment, none, none, none, 0},
    {"lID",       Integer, 0,   fixed,     "0"},
    {"desc",      Text,    255, variable,  "",   no,   yes,  5},
    {"ItemType",  Integer, 0,   fixed,     "",   no},
    {"ItemValue", Double,  0,   fixed,     "0",  no},
    {"TimeSlot",  Integer, 0,   fixed,     "0",  no},
    {"Comment",   Text,    255, variable,  "",   no,   yes,  8},
};
constexpr IndexRow therapieplan_details_indexes[] = {{"lID", "lID"}};

constexpr FieldRow templates_fields[] = {
    {"TEMPLATE_ID", Long,    0,   increment, none, none, none, 0},
    {"desc",        Text,    255, variable,  "",   no,   yes},
    {"ApplyOn",     Text,    255, variable,  "",   no,   yes},
    {"Comment",     Memo,    0,   variable,  "",   no,   yes},
    {"Action",      Integer, 0,   variable,  "1"},
    {"Type",        Integer, 0,   none,      "0",  no,   yes},
    {"IsActive",    Boolean, 0,   variable,  "True"},
};

constexpr FieldRow template_medicaldata_fields[] = {
    {"TEMPLATE_ID", Integer, 0,   fixed,     "0",  no,   none, 0},
    {"ID",          Long,    0,   increment, none, none, none, 0},
    {"vTime",       Date,    0,   fixed,     "",   no,   none, 3},
    {"Value",       Single,  0,   fixed,     "0",  no,   none, 4},
    {"desc",        Text,    255, variable,  "",   no,   yes,  5},
    {"Event",       Long,    0,   fixed,     "",   no,   none, 6},
    {"Comment",     Memo,    0,   variable,  "",   no,   yes,  8},
    {"OADType",     Integer, 0,   fixed,     "0",  no},
};
constexpr IndexRow template_medicaldata_indexes[] = {{"TEMPLATE_ID", "TEMPLATE_ID"}};

constexpr FieldRow template_activities_fields[] = {
    {"TEMPLATE_ID", Integer, 0,   fixed,     "0",  no,   none, 0},
    {"ID",          Long,    0,   increment, none, none, none, 0},
    {"vTime",       Date,    0,   fixed,     "",   no,   none, 3},
    {"Value",       Double,  0,   fixed,     "",   no,   none, 4},
    {"desc",        Text,    255, variable,  "",   no,   yes,  5},
    {"Event",       Long,    0,   fixed,     "",   no,   none, 6},
    {"Comment",     Memo,    0,   variable,  "",   no,   yes,  8},
};
constexpr IndexRow template_activities_indexes[] = {{"TEMPLATE_ID", "TEMPLATE_ID"}};

constexpr FieldRow template_insulin_fields[] = {
    {"TEMPLATE_ID", Integer, 0,  fixed,    "0", no, none, 2},
    {"ID",          Long,    0,  increment},
    {"vTime",       Date,    0,  fixed,    "",  no, none, 3},
    {"bolusie",     Double,  0,  fixed,    "",  no, none, 4},
    {"basalie",     Double,  0,  fixed,    "",  no, none, 5},
    {"desc",        Text,    50, variable, "",  no, yes,  6},
    {"Event",       Long,    0,  fixed,    "",  no, none, 7},
    {"Method",      Long,    0,  fixed,    "0", no, none, 8},
    {"Comment",     Memo,    0,  variable, "",  no, yes,  9},
    {"Rapid",       Boolean, 0,  variable, "False"},
    {"TypeOfEntry", Long,    0,  fixed,    "0", no},
};
constexpr IndexRow template_insulin_indexes[] = {{"PAT_ID", "TEMPLATE_ID"}};

constexpr FieldRow template_intakes_fields[] = {
    {"TEMPLATE_ID",    Integer, 0,   fixed,     "0",  no,   none, 1},
    {"ID",             Long,    0,   increment, none, none, none, 0},
    {"vDate",          Date,    0,   fixed,     "",   no,   none, 3},
    {"vTime",          Date,    0,   fixed,     "",   no,   none, 4},
    {"Value",          Single,  0,   fixed,     "",   no,   none, 5},
    {"desc",           Text,    255, variable,  "",   no,   yes,  6},
    {"Event",          Long,    0,   fixed,     "",   no,   none, 7},
    {"AdditionalInfo", Long,    0,   fixed,     "",   no,   none, 8},
    {"Comment",        Memo,    0,   variable,  "",   no,   yes,  9},
};
constexpr IndexRow template_intakes_indexes[] = {{"TEMPLATE_ID", "TEMPLATE_ID"}};

constexpr TableRow plan_rows[] = {
    {"therapieplan", therapieplan_fields, therapieplan_indexes},
    {"therapieplan_details", therapieplan_details_fields, therapieplan_details_indexes},
    {"templates", templates_fields, {}},
    {"template_medicaldata", template_medicaldata_fields, template_medicaldata_indexes},
    {"template_activities", template_activities_fields, template_activities_indexes},
    {"template_insulin", template_insulin_fields, template_insulin_indexes},
    {"template_intakes", template_intakes_fields, template_intakes_indexes},
};
// clang-format on

}  // namespace

const std::span<const TableRow> plan_tables = plan_rows;

}  // namespace database::schema

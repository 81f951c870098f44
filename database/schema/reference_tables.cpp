// Tables that the diary looks things up in: laboratory definitions, insulins, medicines, comments, events, saved views,
// and the database's own record.
#include "database/schema/schema.h"
#include "database/schema/words.h"

namespace database::schema {
namespace {

using namespace words;

// clang-format off
constexpr FieldRow labdefs_fields[] = {
    {"ID",                Long,    0,   increment},
    {"type",              Integer, 0,   fixed,    "-1", no},
    {"unit",              Integer, 0,   fixed,    "-1", no},
    {"displayunit",       Integer, 0,   fixed,    "-1", no},
    {"field",             Text,    255, fixed,    "",   no},
    {"units_allowed",     Integer, 0,   fixed,    "",   no},
    {"LongDesc",          Text,    255, fixed,    "",   no},
    {"BDTKey",            Text,    255, fixed,    "",   no},
    {"rangefrom",         Single,  0,   fixed,    "0",  no},
    {"rangeuntil",        Single,  0,   fixed,    "0",  no},
    {"criticalThreshold", Single,  0,   fixed,    "0",  no},
    {"sComment",          Text,    255, variable, "",   none, yes},
};

constexpr FieldRow defaultinsulin_fields[] = {
    {"DefaultBolus",    Text,    100, variable, "",  no, no, 3},
    {"DefaultBasal",    Text,    100, variable, "",  no, no, 3},
    {"DefaultMix",      Text,    100, variable, "",  no, no, 3},
    {"DefaultRapid",    Text,    100, variable, "",  no, no, 3},
    {"BolusPercentage", Integer, 0,   none,     "0", no},
};

constexpr FieldRow defaultoad_fields[] = {
    {"DefaultOAD1", Text, 100, variable, "", no, no, 3},
    {"DefaultOAD2", Text, 100, variable, "", no, no, 3},
    {"DefaultOAD3", Text, 100, variable, "", no, no, 3},
};

constexpr FieldRow preferred_insulin_fields[] = {
    {"ID",           Long,    0,   increment},
    {"BolusIE",      Double,  0,   fixed,    "", no},
    {"BasalIE",      Double,  0,   fixed,    "", no},
    {"desc",         Text,    50,  variable, "", no, no},
    {"manufacturer", Text,    50,  variable, "", no, yes},
    {"Comment",      Text,    255, variable, "", no, yes, 7},
    {"Rapid",        Boolean, 0,   variable, "False"},
    {"bSelectable",  Boolean, 0,   none,     "True"},
    {"iSortOrder",   Integer, 0,   none,     "0"},
};

constexpr FieldRow preferred_medicals_fields[] = {
    {"desc",         Text,    50,  variable, "",  no, no},
    {"type",         Integer, 0,   fixed,    "0", no},
    {"manufacturer", Text,    50,  variable, "",  no, yes},
    {"Comment",      Text,    255, variable, "",  no, yes, 7},
};

constexpr FieldRow comments_fields[] = {
    {"desc", Text, 50, variable, "", no, yes},
};

constexpr FieldRow custom_events_fields[] = {
    {"EvNo",  Integer, 0,  variable, "0", no, yes},
    {"Event", Text,    50, variable, "",  no, yes},
};

constexpr FieldRow callback_fields[] = {
    {"ID",          Long,    0,   increment, none, none, none, 0},
    {"vDate",       Date,    0,   fixed,     "",   no},
    {"vDateFrom",   Date,    0,   fixed,     "",   no},
    {"vDateUntil",  Date,    0,   fixed,     "",   no,   none, 2},
    {"vTimeFrom",   Date,    0,   fixed,     "",   no},
    {"vTimeuntil",  Date,    0,   fixed,     "",   no},
    {"days",        Text,    255, variable,  "",   no,   yes},
    {"crit",        Text,    255, variable,  "",   no,   yes},
    {"user",        Text,    255, variable,  "",   no,   yes},
    {"display",     Text,    255, variable,  "",   no,   yes},
    {"WhatColumns", Text,    255, variable,  "",   no,   yes},
    {"WhatMarkers", Long,    0,   variable,  "0",  no,   yes},
    {"pos",         Long,    0,   fixed,     "",   no},
    {"type",        Integer, 0,   fixed,     "",   no},
    {"category",    Integer, 0,   fixed,     "0",  no},
    {"desc",        Text,    255, variable,  "",   no,   yes},
    {"control",     Text,    255, variable,  "",   no,   yes},
};
constexpr IndexRow callback_indexes[] = {{"vDate", "vDate"}};

constexpr FieldRow import_fields[] = {
    {"id",                Long,    0,  increment},
    {"ImportFrom",        Integer, 0,  fixed,    "0", no, none, 3},
    {"ImportDesc",        Text,    30, fixed,    "",  no},
    {"ImportID",          Text,    30, fixed,    "",  no},
    {"ImportType",        Integer, 0,  fixed,    "0", no},
    {"Flags",             Long,    0,  none,     "0", no},
    {"MeterID",           Text,    50, variable, "",  no, no,   4},
    {"DateOfImport",      Date,    0,  fixed,    "",  no, none, 5},
    {"DateFirstImported", Date,    0,  fixed,    "",  no, none, 6},
    {"DateLastImported",  Date,    0,  fixed,    "",  no, none, 7},
};

constexpr FieldRow db_info_fields[] = {
    {"MajVersion",     Integer, 0,   variable},
    {"MinVersion",     Integer, 0,   variable},
    {"Desc",           Text,    255, variable, "", no,   no,   2},
    {"Password",       Text,    255, none,     "", none, yes},
    {"oemtype",        Text,    255, none,     "", none, yes},
    {"Type",           Integer, 0,   variable},
    {"LastBackup",     Date,    0,   fixed,    "", no},
    {"LastCompressed", Date,    0,   fixed,    "", no},
    {"LastArchive",    Date,    0,   fixed,    "", no},
    {"lAvailableData", Long,    0,   fixed,    "", no},
    {"sAvailableData", Memo,    0,   fixed,    "", no,   yes},
    {"lastchanged",    Date,    0,   fixed,    "", no,   none, 4},
    {"Created",        Date,    0,   fixed,    "", no,   none, 4},
    {"LastUser",       Text,    30,  fixed,    "", no,   none, 4},
};

constexpr TableRow reference_rows[] = {
    {"labdefs", labdefs_fields, {}},
    {"defaultinsulin", defaultinsulin_fields, {}},
    {"defaultoad", defaultoad_fields, {}},
    {"preferredInsulin", preferred_insulin_fields, {}},
    {"preferredMedicals", preferred_medicals_fields, {}},
    {"Comments", comments_fields, {}},
    {"CustomEvents", custom_events_fields, {}},
    {"callback", callback_fields, callback_indexes},
    {"import", import_fields, {}},
    {"db_info", db_info_fields, {}},
};
// clang-format on

}  // namespace

const std::span<const TableRow> reference_tables = reference_rows;

}  // namespace database::schema

// The diary's entries: measured values, doses, meals, activities, and what devices report. A day and its time of day
// are two fields. A value that was not measured is -1, where its default says so.
#include "database/schema/schema.h"
#include "database/schema/words.h"

namespace database::schema {
namespace {

using namespace words;

// clang-format off
constexpr FieldRow glucose_fields[] = {
    {"ID",        Long,    0,   increment, none, none, none, 0},
    {"vDate",     Date,    0,   fixed,     "",   no,   none, 2},
    {"vTime",     Date,    0,   fixed,     "",   no,   none, 3},
    {"Value",     Integer, 0,   fixed,     "",   no,   none, 4},
    {"Mark",      Integer, 0,   fixed,     "0",  no},
    {"Event",     Integer, 0,   fixed,     "",   no,   none, 5},
    {"Method",    Integer, 0,   fixed,     "0",  no,   none, 6},
    {"Comment",   Text,    255, variable,  "",   no,   yes,  7},
    {"ExtData",   Text,    255, variable,  "",   no,   yes},
    {"importid",  Long,    0,   none,      "0",  no},
    {"flag",      Long,    0,   none,      "0",  no},
    {"Bloodtype", Integer, 0,   fixed,     "0",  no,   none, 8},
};
constexpr IndexRow glucose_indexes[] = {{"vDate", "vDate"}, {"vTime", "vTime"}};

constexpr FieldRow insulin_fields[] = {
    {"ID",       Long,    0,   increment, none, none, none, 0},
    {"vDate",    Date,    0,   fixed,     "",   no,   none, 2},
    {"vTime",    Date,    0,   fixed,     "",   no,   none, 3},
    {"BolusIE",  Double,  0,   fixed,     "",   no,   none, 4},
    {"BasalIE",  Double,  0,   fixed,     "",   no,   none, 5},
    {"desc",     Text,    50,  variable,  "",   no,   yes,  6},
    {"Event",    Long,    0,   fixed,     "",   no,   none, 7},
    {"Method",   Integer, 0,   fixed,     "0",  no,   none, 8},
    {"Comment",  Text,    255, variable,  "",   no,   yes,  9},
    {"Rapid",    Boolean, 0,   variable,  "False"},
    {"ExtData",  Text,    255, variable,  "",   no,   yes},
    {"importid", Long,    0,   none,      "0",  no},
    {"flag",     Long,    0,   none,      "0",  no},
};
constexpr IndexRow insulin_indexes[] = {{"vDate", "vDate"}, {"vTime", "vTime"}};

constexpr FieldRow insulinpump_fields[] = {
    {"ID",       Long,   0,   increment, none, none, none, 0},
    {"vDate",    Date,   0,   fixed,     "",   no,   none, 2},
    {"vTime",    Date,   0,   fixed,     "",   no,   none, 3},
    {"Amount",   Double, 0,   fixed,     "",   no,   none, 4},
    {"Type",     Long,   0,   fixed,     "",   no,   none, 7},
    {"Profile",  Long,   0,   fixed,     "",   no,   none, 7},
    {"Temp",     Long,   0,   fixed,     "",   no,   none, 7},
    {"desc",     Text,   50,  variable,  "",   no,   yes,  6},
    {"Event",    Long,   0,   fixed,     "",   no,   none, 7},
    {"Comment",  Text,   255, variable,  "",   no,   yes,  9},
    {"importid", Long,   0,   none,      "0",  no},
    {"flag",     Long,   0,   none,      "0",  no},
};
constexpr IndexRow insulinpump_indexes[] = {{"vDate", "vDate"}, {"vTime", "vTime"}, {"Type", "Type"}};

constexpr FieldRow ip_fields[] = {
    {"ID",           Long,    0, increment, none, none, none, 0},
    {"vDate",        Date,    0, fixed,     "",   no,   none, 2},
    {"vHour",        Long,    0, none,      "-1", no},
    {"TotalBolus",   Double,  0, none,      "0",  no},
    {"TotalBasal",   Double,  0, none,      "0",  no},
    {"PercentBolus", Double,  0, none,      "0",  no},
    {"PercentBasal", Double,  0, none,      "0",  no},
    {"NoBR",         Integer, 0, none,      "0",  no},
    {"NoBls",        Integer, 0, none,      "0",  no},
};
constexpr IndexRow ip_indexes[] = {{"vDate", "vDate"}, {"vHour", "vHour"}};

constexpr FieldRow pressure_fields[] = {
    {"ID",       Long,    0,   increment, none, none, none, 0},
    {"vDate",    Date,    0,   fixed,     "",   no,   none, 2},
    {"vTime",    Date,    0,   fixed,     "",   no,   none, 3},
    {"BPSYS",    Integer, 0,   fixed,     "0",  no,   none, 4},
    {"BPDIA",    Integer, 0,   fixed,     "0",  no,   none, 4},
    {"BPMAP",    Integer, 0,   fixed,     "0",  no,   none, 4},
    {"BPPulse",  Integer, 0,   fixed,     "0",  no,   none, 4},
    {"Event",    Integer, 0,   fixed,     "",   no,   none, 5},
    {"Method",   Integer, 0,   fixed,     "0",  no,   none, 6},
    {"Comment",  Text,    255, variable,  "",   no,   yes,  7},
    {"ExtData",  Text,    255, variable,  "",   no,   yes},
    {"importid", Long,    0,   none,      "0",  no},
    {"flag",     Long,    0,   none,      "0",  no},
};
constexpr IndexRow pressure_indexes[] = {{"vDate", "vDate"}, {"vTime", "vTime"}};

constexpr FieldRow intakes_fields[] = {
    {"ID",             Long,    0,   increment, none, none, none, 0},
    {"vDate",          Date,    0,   fixed,     "",   no,   none, 2},
    {"vTime",          Date,    0,   fixed,     "",   no,   none, 3},
    {"Value",          Single,  0,   fixed,     "0",  no,   none, 4},
    {"desc",           Text,    255, variable,  "",   no,   yes,  5},
    {"Event",          Long,    0,   fixed,     "",   no,   none, 6},
    {"AdditionalInfo", Long,    0,   fixed,     "",   no,   none, 7},
    {"Comment",        Text,    255, variable,  "",   no,   yes,  8},
    {"Method",         Integer, 0,   fixed,     "0",  no},
    {"ExtData",        Text,    255, variable,  "",   no,   yes},
    {"importid",       Long,    0,   none,      "0",  no},
    {"flag",           Long,    0,   none,      "0",  no},
};
constexpr IndexRow intakes_indexes[] = {{"vDate", "vDate"}, {"vTime", "vTime"}};

constexpr FieldRow detailed_intakes_fields[] = {
    {"ID",      Long,    0,   increment, none, none, none, 0},
    {"lID",     Long,    0,   none,      none, none, none, 1},
    {"desc",    Text,    255, variable,  "",   no,   yes,  2},
    {"BE",      Single,  0,   fixed,     "0",  no,   none, 3},
    {"KH",      Single,  0,   fixed,     "",   no,   none, 4},
    {"KCal",    Integer, 0,   fixed,     "-1", no,   none, 4},
    {"Protein", Single,  0,   fixed,     "-1", no,   none, 4},
    {"Chol",    Single,  0,   fixed,     "-1", no,   none, 4},
    {"Fett",    Single,  0,   fixed,     "-1", no,   none, 4},
    {"Wasser",  Single,  0,   fixed,     "-1", no,   none, 4},
    {"Ballast", Single,  0,   fixed,     "-1", no,   none, 4},
};

constexpr FieldRow activities_fields[] = {
    {"ID",        Long,    0,   increment, none, none, none, 0},
    {"vDate",     Date,    0,   fixed,     "",   no,   none, 2},
    {"vTime",     Date,    0,   fixed,     "",   no,   none, 3},
    {"value",     Integer, 0,   fixed,     "",   no,   none, 4},
    {"intensity", Integer, 0,   fixed,     "0",  no,   none, 4},
    {"desc",      Text,    255, variable,  "",   no,   yes,  5},
    {"Event",     Integer, 0,   fixed,     "",   no,   none, 6},
    {"Method",    Integer, 0,   fixed,     "0",  no,   none, 7},
    {"Comment",   Text,    255, variable,  "",   no,   yes,  8},
    {"importid",  Long,    0,   none,      "0",  no},
    {"flag",      Long,    0,   none,      "0",  no},
    {"ExtData",   Text,    255, variable,  "",   no,   yes},
};
constexpr IndexRow activities_indexes[] = {{"vDate", "vDate"}, {"vTime", "vTime"}};

constexpr FieldRow steps_fields[] = {
    {"ID",             Long,    0,   increment, none, none, none, 0},
    {"vDate",          Date,    0,   fixed,     "",   no,   none, 2},
    {"vTime",          Date,    0,   fixed,     "",   no,   none, 3},
    {"total_ns",       Integer, 0,   fixed,     none, no},
    {"total_sns",      Integer, 0,   fixed,     none, no},
    {"total_tns",      Integer, 0,   fixed,     none, no},
    {"total_cns",      Integer, 0,   fixed,     none, no},
    {"total_fatbu",    Integer, 0,   fixed,     none, no},
    {"total_distance", Integer, 0,   fixed,     none, no},
    {"intensity",      Integer, 0,   fixed,     "0",  no,   none, 4},
    {"Event",          Integer, 0,   fixed,     "",   no,   none, 6},
    {"RSType",         Integer, 0,   fixed,     "0",  no,   none, 7},
    {"Comment",        Text,    255, variable,  "",   no,   yes,  8},
    {"importid",       Long,    0,   none,      "0",  no},
    {"flag",           Long,    0,   none,      "0",  no},
};
constexpr IndexRow steps_indexes[] = {{"vDate", "vDate"}, {"vTime", "vTime"}};

constexpr FieldRow medicaldata_fields[] = {
    {"ID",       Long,    0,   increment, none, none, none, 0},
    {"vDate",    Date,    0,   fixed,     "",   no,   none, 2},
    {"vTime",    Date,    0,   fixed,     "",   no,   none, 3},
    {"value",    Single,  0,   fixed,     "0",  no,   none, 4},
    {"desc",     Text,    255, variable,  "",   no,   yes,  5},
    {"Event",    Integer, 0,   fixed,     "",   no,   none, 6},
    {"Method",   Integer, 0,   fixed,     "0",  no,   none, 7},
    {"Comment",  Text,    255, variable,  "",   no,   yes,  8},
    {"OADType",  Integer, 0,   fixed,     "0",  no},
    {"ExtData",  Text,    255, variable,  "",   no,   yes},
    {"importid", Long,    0,   none,      "0",  no},
    {"flag",     Long,    0,   none,      "0",  no},
};
constexpr IndexRow medicaldata_indexes[] = {{"vDate", "vDate"}, {"vTime", "vTime"}};

constexpr FieldRow eventlog_fields[] = {
    {"ID",             Long,    0,   increment, none, none, none, 0},
    {"vDate",          Date,    0,   fixed,     "",   no,   none, 2},
    {"vTime",          Date,    0,   fixed,     "",   no,   none, 3},
    {"event",          Integer, 0,   fixed,     "",   no,   none, 4},
    {"typeofevent",    Integer, 0,   fixed,     "0",  no},
    {"Comment",        Text,    255, variable,  "",   no,   yes,  7},
    {"DeviceSerialID", Text,    255, variable,  "",   no,   yes},
    {"DeviceID",       Integer, 0,   fixed,     "0",  no},
    {"importid",       Long,    0,   none,      "0",  no},
    {"flag",           Long,    0,   none,      "0",  no},
};
constexpr IndexRow eventlog_indexes[] = {{"vDate", "vDate"}, {"vTime", "vTime"}};

constexpr FieldRow sysevents_fields[] = {
    {"ID",      Long,    0,   increment, none, none, none, 0},
    {"vDate",   Date,    0,   fixed,     "",   no,   none, 2},
    {"event",   Integer, 0,   fixed,     "0",  no,   none, 4},
    {"Comment", Text,    255, variable,  "",   no,   yes,  7},
    {"param1",  Text,    255, variable,  "",   no,   yes},
    {"param2",  Text,    255, variable,  "",   no,   yes},
    {"flag",    Long,    0,   none,      "0",  no},
};
constexpr IndexRow sysevents_indexes[] = {{"vDate", "vDate"}};

constexpr FieldRow pump_configuration_fields[] = {
    {"ID",             Long,    0,   increment, none, none, none, 0},
    {"vDate",          Date,    0,   fixed,     "",   no,   none, 2},
    {"vTime",          Date,    0,   fixed,     "",   no,   none, 3},
    {"itype",          Integer, 0,   fixed,     "",   no,   none, 4},
    {"Data1",          Text,    255, none,      "",   no,   yes},
    {"Data2",          Text,    255, none,      "",   no,   yes},
    {"Data3",          Text,    255, none,      "",   no,   yes},
    {"Comment",        Text,    255, variable,  "",   no,   yes,  7},
    {"Desc",           Text,    255, none,      "",   no,   yes},
    {"DeviceSerialID", Text,    255, variable,  "",   no,   yes},
    {"DeviceID",       Integer, 0,   fixed,     "0",  no},
    {"importid",       Long,    0,   none,      "0",  no},
    {"flag",           Long,    0,   none,      "0",  no},
};
constexpr IndexRow pump_configuration_indexes[] = {{"vDate", "vDate"}, {"vTime", "vTime"}};

constexpr FieldRow labvalues_fields[] = {
    {"ID",         Long,    0,   increment},
    {"labor_id",   Long,    0,   fixed,    "-1", no},
    {"labor_desc", Text,    255, fixed,    "",   no},
    {"vdate",      Date,    0,   fixed,    ""},
    {"vtime",      Date,    0,   fixed,    ""},
    {"sComment",   Text,    255, variable, "",   none, yes},
    {"value",      Single,  0,   fixed,    "-1"},
    {"importid",   Long,    0,   none,     "0",  no},
    {"flag",       Long,    0,   none,     "0",  no},
    {"type",       Integer, 0,   fixed,    "0"},
    {"method",     Integer, 0,   fixed,    "0"},
};

constexpr FieldRow day_info_fields[] = {
    {"vDate",               Date,    0, fixed, "", no,   none, 2},
    {"iWeight",             Single,  0, fixed},
    {"dBodyFat",            Single,  0, fixed},
    {"bMenstruation",       Boolean, 0, fixed, "False"},
    {"bIllness",            Boolean, 0, fixed, "False"},
    {"bHospital",           Boolean, 0, fixed, "False"},
    {"bPumpInsulinChanged", Boolean, 0, fixed, "False"},
    {"bPumpBatteryChanged", Boolean, 0, fixed, "False"},
    {"bPumpNeedleChanged",  Boolean, 0, fixed, "False"},
    {"HealthState",         Integer, 0, fixed, "-1"},
    {"PsychoState",         Integer, 0, fixed, "-1"},
    {"Memo",                Memo,    0, fixed, "", none, yes},
};

constexpr TableRow measurement_rows[] = {
    {"glucose", glucose_fields, glucose_indexes},
    {"insulin", insulin_fields, insulin_indexes},
    {"insulinpump", insulinpump_fields, insulinpump_indexes},
    {"ip", ip_fields, ip_indexes},
    {"pressure", pressure_fields, pressure_indexes},
    {"intakes", intakes_fields, intakes_indexes},
    {"detailed_intakes", detailed_intakes_fields, {}},
    {"template_detailed_intakes", detailed_intakes_fields, {}},
    {"activities", activities_fields, activities_indexes},
    {"steps", steps_fields, steps_indexes},
    {"medicaldata", medicaldata_fields, medicaldata_indexes},
    {"eventlog", eventlog_fields, eventlog_indexes},
    {"sysevents", sysevents_fields, sysevents_indexes},
    {"PumpConfiguration", pump_configuration_fields, pump_configuration_indexes},
    {"labvalues", labvalues_fields, {}},
    {"day_info", day_info_fields, {}},
};
// clang-format on

}  // namespace

const std::span<const TableRow> measurement_tables = measurement_rows;

}  // namespace database::schema

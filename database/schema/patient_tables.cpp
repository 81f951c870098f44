// The patient: master data, settings with daytime zones, notes, laboratory results of visits, reminders.
#include "database/schema/schema.h"
#include "database/schema/words.h"

namespace database::schema {
namespace {

using namespace words;

// clang-format off
constexpr FieldRow patdat_fields[] = {
    {"id",              Integer, 0,   fixed,    "0",  no, none, 1},
    {"name",            Text,    50,  variable, "",   no, no,   2},
    {"firstname",       Text,    50,  variable, "",   no, no,   3},
    {"street",          Text,    50,  variable, "",   no, yes,  4},
    {"zip",             Text,    50,  variable, "",   no, yes,  5},
    {"city",            Text,    50,  variable, "",   no, yes,  6},
    {"phone",           Text,    50,  variable, "",   no, yes,  7},
    {"fax",             Text,    50,  variable, "",   no, yes,  8},
    {"email",           Text,    100, variable, "",   no, yes,  9},
    {"A1",              Text,    255, none,     "",   no, yes},
    {"A2",              Text,    255, none,     "",   no, yes},
    {"A3",              Text,    255, none,     "",   no, yes},
    {"number",          Text,    50,  variable, "",   no, yes,  10},
    {"gender",          Byte,    0,   fixed,    "0",  no, none, 11},
    {"Therapy",         Integer, 0,   fixed,    "0",  no},
    {"DiabetesSince",   Integer, 0,   fixed,    "-1", no},
    {"InsulinSince",    Integer, 0,   fixed,    "-1", no},
    {"OADSince",        Integer, 0,   fixed,    "-1", no},
    {"CPeptid",         Integer, 0,   fixed,    "-1", no},
    {"insurance",       Text,    30,  variable, "",   no, yes},
    {"insurancenumber", Text,    20,  variable, "",   no, yes},
    {"birthday",        Date,    0,   fixed,    "",   no, none, 12},
    {"height",          Integer, 0,   fixed,    "0",  no, none, 13},
    {"typ",             Integer, 0,   fixed,    "0"},
    {"smokerstatus",    Integer, 0,   none,     "0",  no},
};
constexpr IndexRow patdat_indexes[] = {{"id", "id"}};

constexpr FieldRow patdat_doctor_fields[] = {
    {"ID",     Long,    0,   increment},
    {"Typ",    Integer, 0,   fixed,    "0"},
    {"vdate",  Date,    0,   fixed,    "",   none, none, 4},
    {"vtime",  Date,    0,   fixed,    "",   none, none, 5},
    {"Desc",   Text,    255, none,     none, none, yes},
    {"mMemo",  Memo,    0,   variable, "",   no,   yes},
    {"Method", Integer, 0,   fixed,    "0"},
    {"bIsOk",  Boolean, 0,   none,     "True"},
};

constexpr FieldRow patdat_labs_fields[] = {
    {"ID",         Long,    0,   increment},
    {"labor_id",   Long,    0,   fixed,    "-1", no},
    {"labor_desc", Text,    255, fixed,    "",   no},
    {"vdate",      Date,    0,   fixed,    ""},
    {"vtime",      Date,    0,   fixed,    ""},
    {"sComment",   Text,    255, variable, "",   none, yes},
    {"dHbA",       Single,  0,   fixed,    "-1"},
    {"dHbAc",      Single,  0,   fixed,    "-1"},
    {"iChol",      Integer, 0,   fixed,    "-1"},
    {"iAlbu",      Integer, 0,   fixed,    "-1"},
    {"iHDL",       Integer, 0,   fixed,    "-1"},
    {"iLDL",       Integer, 0,   fixed,    "-1"},
    {"iTri",       Integer, 0,   fixed,    "-1"},
    {"iCreatinin", Single,  0,   fixed,    "-1"},
    {"dKetones",   Single,  0,   fixed,    "-1"},
    {"GLUC_NUE",   Single,  0,   fixed,    "-1", no},
    {"GLUC_PP",    Single,  0,   fixed,    "-1", no},
    {"INR",        Single,  0,   fixed,    "-1", no},
    {"Quick",      Single,  0,   fixed,    "-1", no},
    {"method",     Integer, 0,   fixed,    "0"},
    {"importid",   Integer, 0,   fixed,    "0"},
};

constexpr FieldRow patdat_setup_fields[] = {
    {"BGTargetMax",    Integer, 0,  fixed,    "",    no},
    {"BGTargetMin",    Integer, 0,  fixed,    "",    no},
    {"BPTargetSysMax", Integer, 0,  fixed,    "135", no},
    {"BPTargetSysMin", Integer, 0,  fixed,    "105", no},
    {"BPTargetDiaMax", Integer, 0,  fixed,    "90",  no},
    {"BPTargetDiaMin", Integer, 0,  fixed,    "60",  no},
    {"BGHyper",        Integer, 0,  fixed,    "",    no, none, 5},
    {"BGHypo",         Integer, 0,  fixed,    "",    no, none, 6},
    {"BUPerDayMax",    Single,  0,  fixed,    "-1"},
    {"KHPerDayMax",    Integer, 0,  fixed,    "-1"},
    {"CholPerDayMax",  Single,  0,  fixed,    "-1"},
    {"KCalPerDayMax",  Integer, 0,  fixed,    "-1"},
    {"FatPerDayMax",   Integer, 0,  fixed,    "-1"},
    {"ProtPerDayMax",  Integer, 0,  fixed,    "-1"},
    {"TargetWeight",   Long,    0,  fixed,    "0",   no},
    {"BB_From",        Date,    0,  fixed,    none,  yes},
    {"BB_Until",       Date,    0,  fixed,    none,  yes},
    {"AB_From",        Date,    0,  fixed,    none,  yes},
    {"AB_Until",       Date,    0,  fixed,    none,  yes},
    {"BL_From",        Date,    0,  fixed,    none,  yes},
    {"BL_Until",       Date,    0,  fixed,    none,  yes},
    {"AL_From",        Date,    0,  fixed,    none,  yes},
    {"AL_Until",       Date,    0,  fixed,    none,  yes},
    {"BS_From",        Date,    0,  fixed,    none,  yes},
    {"BS_Until",       Date,    0,  fixed,    none,  yes},
    {"AS_From",        Date,    0,  fixed,    none,  yes},
    {"AS_Until",       Date,    0,  fixed,    none,  yes},
    {"BD_From",        Date,    0,  fixed,    none,  yes},
    {"BD_Until",       Date,    0,  fixed,    none,  yes},
    {"AD_From",        Date,    0,  fixed,    none,  yes},
    {"AD_Until",       Date,    0,  fixed,    none,  yes},
    {"BedTime_From",   Date,    0,  fixed,    none,  yes},
    {"BedTime_Until",  Date,    0,  fixed,    none,  yes},
    {"UTZ1_From",      Date,    0,  fixed,    none,  yes},
    {"UTZ1_Until",     Date,    0,  fixed,    none,  yes},
    {"UTZ1_Desc",      Text,    50, variable, "",    no, yes},
    {"UTZ2_From",      Date,    0,  fixed,    none,  yes},
    {"UTZ2_Until",     Date,    0,  fixed,    none,  yes},
    {"UTZ2_Desc",      Text,    50, variable, "",    no, yes},
    {"UTZ3_From",      Date,    0,  fixed,    none,  yes},
    {"UTZ3_Until",     Date,    0,  fixed,    none,  yes},
    {"UTZ3_Desc",      Text,    50, variable, "",    no, yes},
    {"UTZ4_From",      Date,    0,  fixed,    none,  yes},
    {"UTZ4_Until",     Date,    0,  fixed,    none,  yes},
    {"UTZ4_Desc",      Text,    50, variable, "",    no, yes},
};

constexpr FieldRow memos_fields[] = {
    {"ID",    Long,    0, increment},
    {"Typ",   Integer, 0, fixed,    "0"},
    {"vdate", Date,    0, fixed,    "", none, none, 4},
    {"vtime", Date,    0, fixed,    "", none, none, 5},
    {"mMemo", Memo,    0, variable, "", no,   yes},
};

constexpr FieldRow event_prot_fields[] = {
    {"ID",      Long,    0,   increment},
    {"vdate",   Date,    0,   fixed, ""},
    {"vtime",   Date,    0,   fixed, ""},
    {"event",   Integer, 0,   fixed, ""},
    {"Source",  Text,    100, fixed, "", no, yes},
    {"Comment", Text,    255, fixed, "", no, yes},
};

constexpr FieldRow healthpass_fields[] = {
    {"ID",                Long,    0, increment, none, none, none, 0},
    {"Quarter",           Integer},
    {"Year",              Integer},
    {"iWeight",           Integer, 0, none,      "-1"},
    {"iPressureSys",      Integer, 0, none,      "-1"},
    {"iPressureDia",      Integer, 0, none,      "-1"},
    {"iGlucoseMin_sober", Integer, 0, none,      "-1"},
    {"iGlucoseMax_sober", Integer, 0, none,      "-1"},
    {"iGlucoseMin",       Integer, 0, none,      "-1"},
    {"iGlucoseMax",       Integer, 0, none,      "-1"},
    {"dHba",              Single,  0, none,      "-1"},
    {"dHbac",             Single,  0, none,      "-1"},
    {"nBPMeasures",       Integer, 0, none,      "-1"},
    {"nBGMeasures",       Integer, 0, none,      "-1"},
    {"iAlbuminury",       Integer, 0, none,      "-1"},
    {"iCholesterol",      Integer, 0, none,      "-1"},
    {"iHypos",            Integer, 0, none,      "-1"},
    {"iHDL",              Integer, 0, none,      "-1"},
    {"iLDL",              Integer, 0, none,      "-1"},
    {"iTriglycerids",     Integer, 0, none,      "-1"},
    {"iCreatinin",        Single,  0, none,      "-1"},
};

constexpr FieldRow reminder_fields[] = {
    {"ID",     Long,    0,   increment, none, none, none, 0},
    {"vTime",  Date,    0,   fixed,     ""},
    {"Action", Integer, 0,   fixed,     "0"},
    {"days",   Text,    255, variable,  "",   no,   yes,  5},
};

constexpr TableRow patient_rows[] = {
    {"patdat", patdat_fields, patdat_indexes},
    {"patdat_doctor", patdat_doctor_fields, {}},
    {"patdat_labs", patdat_labs_fields, {}},
    {"patdat_setup", patdat_setup_fields, {}},
    {"Memos", memos_fields, {}},
    {"EventProt", event_prot_fields, {}},
    {"healthpass", healthpass_fields, {}},
    {"reminder", reminder_fields, {}},
};

// The table of the patient index database: one row for each patient, without an index. The diary's own creation
// prepares a memo field between DateOfBirth and ExternalID but never appends it, so there is none here.
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

}  // namespace

const std::span<const TableRow> patient_tables = patient_rows;

const TableRow index_table{"index", index_fields, {}};

}  // namespace database::schema

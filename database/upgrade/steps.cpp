// The ladder as a table. A row opens each step; the step's actions follow it. Every step stays as it was issued, even
// where it is odd, because databases out there have run it. A new step goes to the end, with its version in
// version_record.h.
#include "database/upgrade/steps.h"

#include <algorithm>
#include <vector>

#include "database/schema/words.h"
#include "database/upgrade/actions.h"
#include "database/version_record.h"

namespace database::upgrade {
namespace {

using namespace schema::words;
using schema::FieldRow;
using Names = std::span<const std::string_view>;

constexpr Action step(std::int16_t version, std::string_view purpose) { return {.text = purpose, .version = version}; }
constexpr Action create(std::string_view table) { return {.act = create_table, .table = table}; }
constexpr Action create_missing(std::string_view table) { return {.act = create_missing_table, .table = table}; }
constexpr Action remove(std::string_view table) { return {.act = delete_table, .table = table}; }
constexpr Action rename(std::string_view table, std::string_view name) {
  return {.act = rename_table, .table = table, .text = name};
}
constexpr Action add(std::string_view table, const FieldRow& field) {
  return {.act = add_field, .table = table, .field = field};
}
constexpr Action add(Names tables, const FieldRow& field) {
  return {.act = add_field, .tables = tables, .field = field};
}
constexpr Action add_missing(std::string_view table, const FieldRow& field) {
  return {.act = add_missing_field, .table = table, .field = field};
}
constexpr Action remove_field(std::string_view table, std::string_view field) {
  return {.act = delete_field, .table = table, .text = field};
}
/// The type of the field does not change.
constexpr Action change(std::string_view table, const FieldRow& field) {
  return {.act = change_field, .table = table, .field = field};
}
constexpr Action change(Names tables, const FieldRow& field) {
  return {.act = change_field, .tables = tables, .field = field};
}
constexpr Action order(std::string_view table, Names names) {
  return {.act = order_fields, .table = table, .names = names};
}
constexpr Action sql(std::string_view table, std::string_view text) {
  return {.act = execute, .table = table, .text = text};
}

constexpr std::string_view entry_tables[] = {"glucose",    "pressure", "insulin",   "intakes",    "medicaldata",
                                             "activities", "eventlog", "labvalues", "insulinpump"};
constexpr std::string_view device_tables[] = {"Activities", "glucose", "insulin", "Pressure", "Intakes", "MedicalData"};
constexpr std::string_view tablet_tables[] = {"MedicalData", "template_medicaldata"};

constexpr std::string_view laboratory_order[] = {"id",    "vdate",      "vtime",   "sComment", "dhba",
                                                 "dhbac", "iChol",      "iAlbu",   "iHDL",     "iLDL",
                                                 "iTri",  "iCreatinin", "dKetones"};
constexpr std::string_view laboratory_order_with_place[] = {
    "id",    "labor_id", "labor_desc", "vdate", "vtime",      "sComment", "dhba",     "dhbac",  "iChol",
    "iAlbu", "iHDL",     "iLDL",       "iTri",  "iCreatinin", "dKetones", "GLUC_NUE", "GLUC_PP"};

constexpr std::string_view daytime_zones[] = {"BB_From",  "BB_Until",     "AB_From",      "AB_Until", "BL_From",
                                              "BL_Until", "AL_From",      "AL_Until",     "BS_From",  "BS_Until",
                                              "AS_From",  "AS_Until",     "BD_From",      "BD_Until", "AD_From",
                                              "AD_Until", "BedTime_From", "BedTime_Until"};

// clang-format off
constexpr Action ladder[] = {
    step(3, "the password in the record"),
        add("db_info", {"Password", Text, 255}),
    step(5, "ketones and time of a laboratory visit"),
        add("patdat_labs", {"dKetones", Single}),
        change("patdat_labs", {"sKetones", Text, 0, none, "-1", none, yes}),
        add("patdat_labs", {"vtime", Date}),
    step(6, "memos"),
        create("Memos"),
    step(7, "body fat"),
        add("day_info", {"dBodyFat", Single, 0, fixed}),
    step(8, "insulins in an order of the user's"),
        add("PreferredInsulin", {"bSelectable", Boolean, 0, none, "True"}),
        add("PreferredInsulin", {"iSortOrder", Integer, 0, none, "0"}),
        {.act = number_insulins, .table = "PreferredInsulin"},
    step(9, "health insurance"),
        add("patdat", {"insurance", Text, 30, none, "", none, yes}),
        add("patdat", {"insurancenumber", Text, 20, none, "", none, yes}),
    step(10, "history of the treatment"),
        add("patdat", {"DiabetesSince", Integer, 0, fixed, "-1", no}),
        add("patdat", {"InsulinSince",  Integer, 0, fixed, "-1", no}),
        add("patdat", {"OADSince",      Integer, 0, fixed, "-1", no}),
        add("patdat", {"CPeptid",       Integer, 0, fixed, "-1", no}),
    step(11, "order of the laboratory fields"),
        order("patdat_labs", laboratory_order),
    step(12, "the last user in the record"),
        add("db_info", {"LastUser", Text, 30, fixed, "", no, yes}),
    step(13, "fasting and postprandial glucose"),
        add("patdat_labs", {"GLUC_NUE", Single, 0, fixed, "-1", no}),
        add("patdat_labs", {"GLUC_PP",  Single, 0, fixed, "-1", no}),
    step(14, "which laboratory"),
        add("patdat_labs", {"labor_id",   Long, 0,   fixed, "-1", no}),
        add("patdat_labs", {"labor_desc", Text, 255, fixed, "",   no}),
        order("patdat_labs", laboratory_order_with_place),
    step(15, "retired"),
    step(16, "no mark as default in the documentation"),
        {.act = blank_marked_defaults, .table = "behandlungsprofil"},
    step(17, "coagulation values"),
        add("patdat_labs", {"Quick", Single, 0, fixed, "-1", no}),
        add("patdat_labs", {"INR",   Single, 0, fixed, "-1", no}),
    // The statement for the definitions runs twice: the step stays as it was issued.
    step(18, "laboratories of the definitions and visits"),
        add("Labordefinitionen", {"LaborID", Long, 0, none, "0"}),
        sql("Labordefinitionen", "UPDATE Labordefinitionen SET LaborID=0 WHERE LaborID<=0 OR LaborID IS NULL"),
        sql("patdat_labs", "UPDATE patdat_labs SET Labor_ID=0 WHERE Labor_ID<=0 OR Labor_ID IS NULL"),
        sql("Labordefinitionen", "UPDATE Labordefinitionen SET LaborID=0 WHERE LaborID<=0 OR LaborID IS NULL"),
    // The name "activites" is misspelled, so the activities keep their events. The step stays as it was issued.
    step(19, "events 20 to 27 move to 70 to 77"),
        add("template_insulin", {"TypeOfEntry", Integer, 0, none, "0"}),
        sql("insulin", "UPDATE insulin SET event=event+50 WHERE event BETWEEN 20 AND 27"),
        sql("glucose", "UPDATE glucose SET event=event+50 WHERE event BETWEEN 20 AND 27"),
        sql("intakes", "UPDATE intakes SET event=event+50 WHERE event BETWEEN 20 AND 27"),
        sql("activites", "UPDATE activites SET event=event+50 WHERE event BETWEEN 20 AND 27"),
        sql("medicaldata", "UPDATE medicaldata SET event=event+50 WHERE event BETWEEN 20 AND 27"),
        sql("template_insulin", "UPDATE template_insulin SET event=event+50 WHERE event BETWEEN 20 AND 27"),
    step(20, "protocol of events"),
        create("EventProt"),
    step(21, "memo of a day"),
        add("day_info", {"memo", Memo, 0, none, "", none, yes}),
    step(22, "default insulins"),
        create("defaultinsulin"),
    step(23, "default tablets"),
        create("defaultoad"),
    step(24, "kind of tablet"),
        add(tablet_tables, {"OadType", Integer, 0, none, "0", none, yes}),
    step(25, "daytime zones of the patient"),
        {.act = add_field, .table = "patdat_Setup", .field = {"", Date}, .names = daytime_zones},
        add("patdat_Setup", {"UTZ1_From",  Date}),
        add("patdat_Setup", {"UTZ1_Until", Date}),
        add("patdat_Setup", {"UTZ1_Desc",  Text, 50, none, "", none, yes}),
        add("patdat_Setup", {"UTZ2_From",  Date}),
        add("patdat_Setup", {"UTZ2_Until", Date}),
        add("patdat_Setup", {"UTZ2_Desc",  Text, 50, none, "", none, yes}),
        add("patdat_Setup", {"UTZ3_From",  Date}),
        add("patdat_Setup", {"UTZ3_Until", Date}),
        add("patdat_Setup", {"UTZ3_Desc",  Text, 50, none, "", none, yes}),
        add("patdat_Setup", {"UTZ4_From",  Date}),
        add("patdat_Setup", {"UTZ4_Until", Date}),
        add("patdat_Setup", {"UTZ4_Desc",  Text, 50, none, "", none, yes}),
        {.act = add_zone_times, .table = "patdat_Setup"},
    step(26, "where the blood was taken"),
        add("glucose", {"Bloodtype", Integer, 0, fixed, "0", no}),
    step(27, "description and kind of an import"),
        add("imports", {"ImportDesc", Text,    30, none, "", none, yes}),
        add("imports", {"ImportType", Integer, 0,  none, "0"}),
        sql("imports", "DELETE * FROM IMPORTS"),
    step(28, "a blood type for every value"),
        sql("glucose", "UPDATE GLUCOSE set bloodtype=0 WHERE bloodtype is NULL"),
    step(29, "method and import of a laboratory visit, smoking"),
        add("patdat_labs", {"method",   Integer, 0, none, "0", no}),
        add("patdat_labs", {"importid", Integer, 0, none, "0", no}),
        add("patdat", {"smokerstatus",  Integer, 0, none, "0", no}),
    step(30, "identity of an import"),
        add("imports", {"importid", Text, 30}),
        change("imports", {"method", Text, 0, none, "", no}),
    step(31, "mark of a glucose value"),
        add("glucose", {"mark", Integer, 0, none, "0", no}),
    step(32, "retired"),
    step(33, "events and deliveries of devices"),
        create("eventlog"), create("insulinpump"),
    step(34, "what devices say beyond the value"),
        add(device_tables, {"extdata", Text, 30, none, "", no, yes}),
    step(35, "which may be empty"),
        change(device_tables, {"extdata", Text, 0, none, none, none, yes}),
    step(36, "saved views"),
        create("callback"),
    step(37, "kind of a template"),
        add("Templates", {"type", Integer, 0, none, "0", no}),
    step(38, "therapy plan"),
        create("therapieplan"), create("therapieplan_details"),
    step(39, "tables that version 33 may have left out"),
        create_missing("insulinpump"), create_missing("eventlog"),
    step(41, "import and flags of every entry"),
        create_missing("labvalues"),
        add(entry_tables, {"flag",     Long, 0, none, "0", no}),
        add(entry_tables, {"importid", Long, 0, none, "0", no}),
    step(42, "imports under their new name"),
        create_missing("import"), {.act = move_imports, .table = "imports"},
    step(43, "intensity of an activity"),
        add_missing("activities", {"intensity", Integer, 0, none, "0", no}),
    step(44, "columns and markers of a saved view"),
        remove_field("callback", "display"),
        add("callback", {"WhatColumns", Text, 255, none, "", no, yes}),
        add("callback", {"Display",     Text, 255, none, "", no, yes}),
        add("callback", {"WhatMarkers", Long, 0,   none, "0"}),
    step(45, "one row a laboratory value"),
        remove("labdefs"),
        create("labdefs"),
        create_missing("labvalues"),
        // The next version lets every text be empty. This step does so already, so that no value is lost because of its
        // comment.
        {.act = allow_empty_texts, .table = "labvalues"},
        sql("labvalues", "INSERT INTO labvalues SELECT 1 as [type], iweight as [value], vdate, 0 as method, memo as scomment  FROM day_info WHERE iweight>0"),
        sql("labvalues", "INSERT INTO labvalues SELECT 2 as [type], dbodyfat as [value], vdate, 0 as method, memo as scomment  FROM day_info WHERE dbodyfat>0"),
        sql("labvalues", "INSERT INTO labvalues SELECT 10 as [type], dhba as [value], vdate, vtime,method, scomment  FROM patdat_labs WHERE dhba>0"),
        sql("labvalues", "INSERT INTO labvalues SELECT 11 as [type], dhbac as [value], vdate, vtime,method, scomment FROM patdat_labs WHERE dhbac>0"),
        sql("labvalues", "INSERT INTO labvalues SELECT 12 as [type], ichol as [value], vdate, vtime,method, scomment FROM patdat_labs WHERE ichol>0"),
        sql("labvalues", "INSERT INTO labvalues SELECT 13 as [type], ialbu as [value], vdate, vtime,method, scomment FROM patdat_labs WHERE ialbu>0"),
        sql("labvalues", "INSERT INTO labvalues SELECT 14 as [type], ihdl as [value], vdate, vtime,method, scomment  FROM patdat_labs WHERE ihdl>0"),
        sql("labvalues", "INSERT INTO labvalues SELECT 15 as [type], ildl as [value], vdate, vtime,method,scomment FROM patdat_labs WHERE ildl>0"),
        sql("labvalues", "INSERT INTO labvalues SELECT 16 as [type], itri as [value], vdate, vtime,method,scomment FROM patdat_labs WHERE itri>0"),
        sql("labvalues", "INSERT INTO labvalues SELECT 17 as [type], iCreatinin as [value], vdate, vtime,method, scomment FROM patdat_labs WHERE iCreatinin>0"),
        sql("labvalues", "INSERT INTO labvalues SELECT 18 as [type], dKetones as [value], vdate, vtime, method, scomment  FROM patdat_labs WHERE dKetones>0"),
        sql("labvalues", "INSERT INTO labvalues SELECT 19 as [type], GLUC_PP as [value], vdate, vtime, method, scomment  FROM patdat_labs WHERE GLUC_PP>0"),
        sql("labvalues", "INSERT INTO labvalues SELECT 20 as [type], GLUC_NUE as [value], vdate, vtime, method, scomment FROM patdat_labs WHERE GLUC_NUE>0"),
        sql("labvalues", "INSERT INTO labvalues SELECT 21 as [type], Quick as [value], vdate, vtime, method, scomment FROM patdat_labs WHERE Quick>0"),
        sql("labvalues", "INSERT INTO labvalues SELECT 22 as [type], INR as [value], vdate, vtime, method, scomment  FROM patdat_labs WHERE INR>0"),
    step(46, "upkeep and kinds of data in the record"),
        add("db_info", {"LastCompressed", Date, 0, none, none, no, yes}),
        add("db_info", {"LastArchive",    Date, 0, none, none, no, yes}),
        add("db_info", {"lAvailableData", Long, 0, none, none, no, yes}),
        add("db_info", {"sAvailableData", Memo, 0, none, none, no, yes}),
    step(47, "how the patient felt"),
        add("day_info", {"HealthState", Integer, 0, fixed, "-1"}),
        add("day_info", {"PsychoState", Integer, 0, fixed, "-1"}),
    step(48, "empty texts in every entry"),
        create_missing("labvalues"),
        {.act = allow_empty_texts, .tables = entry_tables},
    step(49, "a blood type for every value, once more"),
        sql("glucose", "UPDATE glucose SET bloodtype=0 WHERE isnull(bloodtype)=true"),
    step(50, "maker and comment of a medicine"),
        add("preferredmedicals", {"manufacturer", Text, 50,  none, none, no, yes}),
        add("preferredmedicals", {"Comment",      Text, 255, none, none, no, yes}),
    step(51, "insulin under its one name, three lines of the practice"),
        rename("insuline", "insulin"),
        rename("insulina", "insulin"),
        add("patdat", {"A1", Text, 255, none, none, no, yes}),
        add("patdat", {"A2", Text, 255, none, none, no, yes}),
        add("patdat", {"A3", Text, 255, none, none, no, yes}),
    step(52, "kind of a saved view"),
        add("callback", {"type", Integer, 0, none, none, no}),
    step(53, "category of a saved view"),
        add("callback", {"category", Integer, 0, none, "0", no}),
    step(54, "memos among the saved views"),
        sql("callback", "INSERT INTO callback SELECT vdate,'Memo^'+mmemo as [desc], -99 as type,0 as category from memos"),
    step(55, "therapy of the patient"),
        add("patdat", {"therapy", Integer, 0, none, "0", no}),
    step(56, "events of the program"),
        create("sysevents"),
    step(57, "step counters"),
        create("steps"),
    step(58, "pump statistics by day"),
        create_missing("ip"), {.act = convert_pump_data, .table = "insulinpump"},
    step(59, "configurations of a pump"),
        {.act = create_after_conversion, .table = "PumpConfiguration"},
    step(60, "the maker's own type in the record"),
        add("db_info", {"oemtype", Text, 255, none, "", none, yes}),
};
// clang-format on

static_assert(std::ranges::max(ladder, {}, &Action::version).version == current_minor_version,
              "current_minor_version is the version of the last step");

std::vector<Step> gather_steps() {
  std::vector<Step> gathered;
  for (const Action& row : ladder) {
    if (row.version > 0) {
      gathered.push_back({row.version, row.text, {&row + 1, 0}});
    } else {
      Step& step = gathered.back();
      step.actions = {step.actions.data(), step.actions.size() + 1};
    }
  }
  return gathered;
}

}  // namespace

std::span<const Step> steps() {
  static const std::vector<Step> gathered = gather_steps();
  return gathered;
}

}  // namespace database::upgrade

#include "wizard/form_layout.h"

#include <span>
#include <string>

namespace wizard {

namespace {

using enum form::Kind;
using form::Bounds;
using form::ControlRow;

// Pages: a heading, a sentence, and below them fields in lines. Texts may grow by 40 % and then wrap, so a label is two
// lines high and as wide as its column. All on a grid of 60 twips (4 pixels at 100 %).
constexpr Bounds page{2280, 0, 6600, 5400};
constexpr Bounds heading{120, 120, 6360, 480};
constexpr Bounds purpose{120, 660, 6360, 720};
constexpr std::int32_t content_top = 1500;
constexpr std::int32_t line_pitch = 540;

constexpr std::int32_t line(int n) { return content_top + n * line_pitch; }
constexpr Bounds label(int n, std::int32_t width = 1740) { return {120, line(n) + 45, width, 510}; }
constexpr Bounds field(int n, std::int32_t left = 1920, std::int32_t width = 4560) {
  return {left, line(n), width, 330};
}
/// Where labels are long: the wide column of labels, what is typed beside it, and its unit.
constexpr std::int32_t wide_label = 3480, beside_wide_label = 3660;
constexpr Bounds value_label(int n) { return label(n, wide_label); }
constexpr Bounds value_field(int n) { return field(n, beside_wide_label, 1200); }
constexpr Bounds unit(int n) { return {4980, line(n) + 45, 1200, 300}; }
/// The names of insulins take two lines: theirs lie further apart.
constexpr std::int32_t insulin_top(int n) { return content_top + n * 720; }
constexpr Bounds insulin_label(int n) { return {120, insulin_top(n) + 45, wide_label, 510}; }
constexpr Bounds insulin_field(int n) { return {beside_wide_label, insulin_top(n), 2820, 330}; }
/// An option inside a group box.
constexpr Bounds option(int n) { return {180, 300 + n * line_pitch, 6000, 480}; }
constexpr Bounds group(int options) { return {120, content_top, 6360, 360 + options * line_pitch}; }

// One control, one line.
// clang-format off
constexpr ControlRow shared_controls[] = {
    {"Image1", -1, Image, "", {0, 0, 2160, 5520}, "Illustration", "L4808"},
    {"Timer1", -1, Timer},
};

constexpr ControlRow intro_page[] = {
    {"Label2", -1, Label, "contstep(0)", heading, "Willkommen"},
    {"lblPurpose", 0, Label, "contstep(0)", purpose, "Dieser Assistent richtet das Programm für Sie ein.", "L4721"},
    {"lblIntro", -1, Label, "contstep(0)", {120, 1500, 6360, 3600}, "Sie brauchen dafür nur wenige Minuten.", "L4803"},
};

constexpr ControlRow folder_page[] = {
    {"lblHeading", 1, Label, "contstep(1)", heading, "Ordner der Patientendaten", "L4702"},
    {"lblPurpose", 1, Label, "contstep(1)", purpose, "Legen Sie fest, wo die Patientendaten liegen.", "L4722"},
    {"lblFolderTitle", -1, Label, "contstep(1)", label(0), "Ordner:", "L4797"},
    {"lblFolder", -1, Label, "contstep(1)", {1920, line(0) + 45, 4560, 720}},
    {"lblLocation", -1, Label, "contstep(1)", {1920, 2280, 4560, 720}},
    {"cmdPath", 0, Button, "contstep(1)", {120, 3180, 6360, 600}, "&Neue gemeinsame Datenbank anlegen …", "L4799"},
    {"cmdPath", 1, Button, "contstep(1)", {120, 3900, 6360, 600}, "&Vorhandene gemeinsame Datenbank verwenden …", "L4800"},
};

constexpr ControlRow unit_page[] = {
    {"lblHeading", 2, Label, "contstep(2)", heading, "Maßeinheit", "L4703"},
    {"lblPurpose", 2, Label, "contstep(2)", purpose, "In welcher Einheit geben Sie Ihren Blutzucker an?", "L4723"},
    {"fraUnit", -1, Frame, "contstep(2)", group(2), "Blutzucker in", "L4750"},
    {"optBGUnit", 0, OptionButton, "fraUnit", option(0), "mg/dL", "L4751"},
    {"optBGUnit", 1, OptionButton, "fraUnit", option(1), "mmol/L", "L4752"},
};

constexpr ControlRow patient_page[] = {
    {"lblHeading", 3, Label, "contstep(3)", heading, "Ihre Daten", "L4704"},
    {"lblPurpose", 3, Label, "contstep(3)", purpose, "Vorname und Nachname werden gebraucht.", "L4724"},
    {"lblFirstName", -1, Label, "contstep(3)", label(0), "&Vorname:", "L4740"},
    {"txtFirstName", -1, TextBox, "contstep(3)", field(0), "", "", true, true},
    {"lblName", -1, Label, "contstep(3)", label(1), "&Nachname:", "L4741"},
    {"txtName", -1, TextBox, "contstep(3)", field(1), "", "", true, true},
    {"lblStreet", -1, Label, "contstep(3)", label(2), "&Straße:", "L4742"},
    {"txtStreet", -1, TextBox, "contstep(3)", field(2), "", "", true, true},
    {"lblZIP", -1, Label, "contstep(3)", label(3), "P&LZ:", "L4743"},
    {"txtZIP", -1, TextBox, "contstep(3)", field(3, 1920, 960), "", "", true, true},
    {"lblCity", -1, Label, "contstep(3)", {3060, line(3) + 45, 780, 480}, "&Ort:", "L4744"},
    {"txtCity", -1, TextBox, "contstep(3)", field(3, 3900, 2580), "", "", true, true},
    {"lblGender", -1, Label, "contstep(3)", label(4), "Geschlecht:", "L4745"},
    {"optGender", 0, OptionButton, "contstep(3)", field(4, 1920, 1860), "&Weiblich", "L4746"},
    {"optGender", 1, OptionButton, "contstep(3)", field(4, 3900, 2580), "&Männlich", "L4747"},
    {"lblDiabetesTyp", -1, Label, "contstep(3)", label(5), "&Diabetestyp:", "L4748"},
    {"cbDiabetesTyp", -1, ComboBox, "contstep(3)", field(5)},
    {"lblTherapie", -1, Label, "contstep(3)", label(6), "T&herapie:", "L4749"},
    {"cbTherapie", -1, ComboBox, "contstep(3)", field(6)},
};

constexpr ControlRow insulin_page[] = {
    {"lblHeading", 4, Label, "contstep(4)", heading, "Ihre Insuline", "L4705"},
    {"lblPurpose", 4, Label, "contstep(4)", purpose, "Wählen Sie Ihre Insuline aus, oder tippen Sie den Namen ein.", "L4725"},
    {"lblInsulin", 0, Label, "contstep(4)", insulin_label(0), "Bolus-Insulin (Normal-Insulin):", "L4766"},
    {"cbInsulin", 0, ComboBox, "contstep(4)", insulin_field(0), "", "", true, true},
    {"lblInsulin", 1, Label, "contstep(4)", insulin_label(1), "Verzögerungs-Insulin (Basal-Insulin):", "L4767"},
    {"cbInsulin", 1, ComboBox, "contstep(4)", insulin_field(1), "", "", true, true},
    {"lblInsulin", 2, Label, "contstep(4)", insulin_label(2), "Misch-Insulin (Basal-Insulin):", "L4768"},
    {"cbInsulin", 2, ComboBox, "contstep(4)", insulin_field(2), "", "", true, true},
    {"lblInsulin", 3, Label, "contstep(4)", insulin_label(3), "Schnell-Insulin (Humalog):", "L4769"},
    {"cbInsulin", 3, ComboBox, "contstep(4)", insulin_field(3), "", "", true, true},
    {"lblInsulin", 4, Label, "contstep(4)", insulin_label(4), "Pumpeninsulin:", "L4770"},
    {"cbInsulin", 4, ComboBox, "contstep(4)", insulin_field(4), "", "", true, true},
};

constexpr ControlRow medicine_page[] = {
    {"lblHeading", 5, Label, "contstep(5)", heading, "Ihre Medikamente", "L4706"},
    {"lblPurpose", 5, Label, "contstep(5)", purpose, "Nehmen Sie Tabletten oder andere Medikamente gegen Diabetes?", "L4726"},
    {"lblMedik", 0, Label, "contstep(5)", label(0), "Medikament 1:", "L4771"},
    {"txtMedik", 0, TextBox, "contstep(5)", field(0), "", "", true, true},
    {"lblMedik", 1, Label, "contstep(5)", label(1), "Medikament 2:", "L4772"},
    {"txtMedik", 1, TextBox, "contstep(5)", field(1), "", "", true, true},
    {"lblMedik", 2, Label, "contstep(5)", label(2), "Medikament 3:", "L4773"},
    {"txtMedik", 2, TextBox, "contstep(5)", field(2), "", "", true, true},
};

// `txtvorgabe` runs over both target pages: one array cannot start twice, so 0 to 3 are the glucose values and 4 to 7
// the blood pressure values.
constexpr ControlRow glucose_target_page[] = {
    {"lblHeading", 6, Label, "contstep(6)", heading, "Blutzuckerziele", "L4707"},
    {"lblPurpose", 6, Label, "contstep(6)", purpose, "Tragen Sie die Werte ein, die Ihr Arzt mit Ihnen vereinbart hat.", "L4727"},
    {"lblVorgabe", 0, Label, "contstep(6)", value_label(0), "Zielbereich &von:", "L4756"},
    {"txtvorgabe", 0, TextBox, "contstep(6)", value_field(0), "", "", true, true},
    {"lblUnit", 0, Label, "contstep(6)", unit(0), "mg/dl"},
    {"lblVorgabe", 1, Label, "contstep(6)", value_label(1), "Zielbereich &bis:", "L4757"},
    {"txtvorgabe", 1, TextBox, "contstep(6)", value_field(1), "", "", true, true},
    {"lblUnit", 1, Label, "contstep(6)", unit(1), "mg/dl"},
    {"lblVorgabe", 2, Label, "contstep(6)", value_label(2), "Hypoglykämie: <=", "L4758"},
    {"txtvorgabe", 2, TextBox, "contstep(6)", value_field(2), "", "", true, true},
    {"lblUnit", 2, Label, "contstep(6)", unit(2), "mg/dl"},
    {"lblVorgabe", 3, Label, "contstep(6)", value_label(3), "Hyperglykämie: >=", "L4759"},
    {"txtvorgabe", 3, TextBox, "contstep(6)", value_field(3), "", "", true, true},
    {"lblUnit", 3, Label, "contstep(6)", unit(3), "mg/dl"},
    {"lblTargetHint", -1, Label, "contstep(6)", {120, line(4) + 180, 6360, 1440}, "Hypoglykämie (Unterzuckerung), Hyperglykämie (Überzuckerung)", "L4760"},
};

constexpr ControlRow pressure_target_page[] = {
    {"lblHeading", 7, Label, "contstep(7)", heading, "Blutdruckziele", "L4708"},
    {"lblPurpose", 7, Label, "contstep(7)", purpose, "Tragen Sie die Werte ein, die Ihr Arzt mit Ihnen vereinbart hat.", "L4728"},
    {"lblVorgabe", 4, Label, "contstep(7)", value_label(0), "Oberer Wert (systolisch) &von:", "L4761"},
    {"txtvorgabe", 4, TextBox, "contstep(7)", value_field(0), "", "", true, true},
    {"lblPressureUnit", 0, Label, "contstep(7)", unit(0), "mmHg", "L4765"},
    {"lblVorgabe", 5, Label, "contstep(7)", value_label(1), "Oberer Wert (systolisch) &bis:", "L4762"},
    {"txtvorgabe", 5, TextBox, "contstep(7)", value_field(1), "", "", true, true},
    {"lblPressureUnit", 1, Label, "contstep(7)", unit(1), "mmHg", "L4765"},
    {"lblVorgabe", 6, Label, "contstep(7)", value_label(2), "Unterer Wert (diastolisch) v&on:", "L4763"},
    {"txtvorgabe", 6, TextBox, "contstep(7)", value_field(2), "", "", true, true},
    {"lblPressureUnit", 2, Label, "contstep(7)", unit(2), "mmHg", "L4765"},
    {"lblVorgabe", 7, Label, "contstep(7)", value_label(3), "Unterer Wert (diastolisch) b&is:", "L4764"},
    {"txtvorgabe", 7, TextBox, "contstep(7)", value_field(3), "", "", true, true},
    {"lblPressureUnit", 3, Label, "contstep(7)", unit(3), "mmHg", "L4765"},
};

// `picLoad` and `picThumb` are the buffers a thumbnail is loaded and scaled in; they are never seen.
constexpr ControlRow chart_page[] = {
    {"lblHeading", 8, Label, "contstep(8)", heading, "Diagramme der Startseite", "L4709"},
    {"lblPurpose", 8, Label, "contstep(8)", purpose, "Wählen Sie bis zu vier Diagramme für Ihre Startseite.", "L4729"},
    {"picFrame", -1, PictureBox, "contstep(8)", {120, 1440, 6360, 2580}, "Verfügbare Diagramme", "L4775"},
    {"picSlide", -1, PictureBox, "picFrame", {0, 0, 6090, 2580}, "Verfügbare Diagramme", "L4775"},
    {"optThumb", 0, ChartOption, "picSlide", {0, 0, 2025, 1335}, "", "", false},
    {"vsbSlide", -1, ScrollBar, "picFrame", {6090, 0, 270, 2580}, "Weitere Diagramme", "L4817"},
    {"picLoad", -1, PictureBox, "contstep(8)", {0, 0, 15, 15}, "", "", false},
    {"picThumb", -1, PictureBox, "contstep(8)", {0, 0, 15, 15}, "", "", false},
    {"lblChartInfoTitle", -1, Label, "contstep(8)", {120, 4140, 4080, 300}},
    {"lblChartInfo", -1, Label, "contstep(8)", {120, 4440, 4080, 960}},
    {"lblPicsTitle", -1, Label, "contstep(8)", {4320, 4140, 1560, 300}, "Gewählt:", "L4776"},
    {"lblPics", -1, Label, "contstep(8)", {5940, 4140, 540, 300}, "0/4"},
    {"cmdViwPic", -1, Button, "contstep(8)", {4320, 4500, 2160, 480}, "Bild &vergrößern", "L4774"},
};

constexpr ControlRow entry_page[] = {
    {"lblHeading", 9, Label, "contstep(9)", heading, "Eingabe", "L4710"},
    {"lblPurpose", 9, Label, "contstep(9)", purpose, "Wie möchten Sie Ihre Werte am liebsten eingeben?", "L4730"},
    {"optDataEntry", 0, OptionButton, "contstep(9)", {120, 1440, 6360, 480}, "Detaillierte Eingabe", "L4777"},
    {"lblDataEntry", 0, Label, "contstep(9)", {420, 1920, 6060, 720}, "Jeder Wert mit allen Einzelheiten.", "L4780"},
    {"optDataEntry", 1, OptionButton, "contstep(9)", {120, 2700, 6360, 480}, "Eingabe in Tabelle", "L4778"},
    {"lblDataEntry", 1, Label, "contstep(9)", {420, 3180, 6060, 720}, "Viele Werte schnell untereinander.", "L4781"},
    {"optDataEntry", 2, OptionButton, "contstep(9)", {120, 3960, 6360, 480}, "Tagebucheingabe", "L4779"},
    {"lblDataEntry", 2, Label, "contstep(9)", {420, 4440, 6060, 720}, "Ein Tag auf einem Blatt.", "L4782"},
};

constexpr ControlRow style_page[] = {
    {"lblHeading", 10, Label, "contstep(10)", heading, "Darstellung", "L4711"},
    {"lblPurpose", 10, Label, "contstep(10)", purpose, "Wie soll das Hauptfenster aussehen?", "L4731"},
    {"optDisplayStyle", 0, OptionButton, "contstep(10)", {120, 1440, 3120, 480}, "Klassisch", "L4784"},
    {"optDisplayStyle", 1, OptionButton, "contstep(10)", {3360, 1440, 3120, 480}, "Modern", "L4785"},
    {"imgDisplayStyle", -1, Image, "contstep(10)", {120, 2040, 4320, 3240}, "Vorschau des Hauptfensters", "L4786"},
};

constexpr ControlRow scheme_page[] = {
    {"lblHeading", 11, Label, "contstep(11)", heading, "Therapieschema", "L4712"},
    {"lblPurpose", 11, Label, "contstep(11)", purpose, "Nach welchem Schema behandeln Sie Ihren Diabetes?", "L4732"},
    {"lblSchema", -1, Label, "contstep(11)", label(0), "&Schema:", "L4787"},
    {"cbSchema", -1, ComboBox, "contstep(11)", field(0)},
    {"lblSchemaDesc", -1, Label, "contstep(11)", {1920, 2040, 4560, 3240}},
};

// The highlights of the next two pages lie above their pictures and blink.
constexpr ControlRow sidebar_page[] = {
    {"lblHeading", 12, Label, "contstep(12)", heading, "Seitenleiste", "L4713"},
    {"lblPurpose", 12, Label, "contstep(12)", purpose, "Soll die Seitenleiste sichtbar sein?", "L4733"},
    {"optShowSideBar", 0, OptionButton, "contstep(12)", {120, 1440, 3120, 480}, "Seitenleiste aus", "L4789"},
    {"optShowSideBar", 1, OptionButton, "contstep(12)", {3360, 1440, 3120, 480}, "Seitenleiste an", "L4790"},
    {"imgDiary", -1, Image, "contstep(12)", {120, 2040, 4320, 3240}, "Das Hauptfenster ohne Seitenleiste", "L4791"},
    {"imgSidebar", -1, Image, "contstep(12)", {120, 2040, 4320, 3240}, "Das Hauptfenster mit Seitenleiste", "L4788"},
    {"imgSidebarMark", -1, Image, "contstep(12)", {120, 2040, 1080, 3240}, "Hervorhebung", "L4810", false},
};

constexpr ControlRow start_page[] = {
    {"lblHeading", 13, Label, "contstep(13)", heading, "Beim Start", "L4714"},
    {"lblPurpose", 13, Label, "contstep(13)", purpose, "Was soll das Programm nach dem Start zeigen?", "L4734"},
    {"optShowStart", 0, OptionButton, "contstep(13)", {120, 1500, 6360, 360}, "Startseite", "L4793"},
    {"optShowStart", 1, OptionButton, "contstep(13)", {120, 1920, 6360, 360}, "Patientenübersicht", "L4794"},
    {"optShowStart", 2, OptionButton, "contstep(13)", {120, 2340, 6360, 360}, "Zuletzt verwendete Ansicht", "L4795"},
    {"imgStart", -1, Image, "contstep(13)", {120, 2820, 3360, 2520}, "Das Hauptfenster nach dem Start", "L4796"},
    {"imgStartMark", -1, Image, "contstep(13)", {960, 3240, 2520, 2100}, "Hervorhebung", "L4810", false},
};

constexpr ControlRow navigation_tip[] = {
    {"lblHeading", 14, Label, "contstep(14)", heading, "Tipp: Navigationsleiste", "L4715"},
    {"lblPurpose", 14, Label, "contstep(14)", purpose, "Ein Klick auf ein Symbol wechselt den Bereich.", "L4735"},
    {"imgNavBar", 0, Image, "contstep(14)", {120, 1500, 4800, 3600}, "Die Navigationsleiste des Programms", "L4804"},
    {"imgNavBar", 1, Image, "contstep(14)", {120, 1500, 4800, 3600}, "Die Navigationsleiste des Programms", "L4804", false},
    {"imgNavBar", 2, Image, "contstep(14)", {120, 1500, 4800, 3600}, "Die Navigationsleiste des Programms", "L4804", false},
    {"imgNavBar", 3, Image, "contstep(14)", {120, 1500, 4800, 3600}, "Die Navigationsleiste des Programms", "L4804", false},
    {"imgNavBar", 4, Image, "contstep(14)", {120, 1500, 4800, 3600}, "Die Navigationsleiste des Programms", "L4804", false},
    {"imgCursorHand", -1, Image, "contstep(14)", {615, 1800, 480, 480}, "Mauszeiger", "L4807"},
};

constexpr ControlRow splits_tip[] = {
    {"lblHeading", 15, Label, "contstep(15)", heading, "Tipp: Geteiltes Fenster", "L4716"},
    {"lblPurpose", 15, Label, "contstep(15)", purpose, "Zwei Ansichten können nebeneinander stehen.", "L4736"},
    {"imgSplitWindow", 0, Image, "contstep(15)", {120, 1440, 4320, 3240}, "Ein geteiltes Fenster des Programms", "L4805"},
    {"imgSplitWindow", 1, Image, "contstep(15)", {120, 1440, 4320, 3240}, "Ein geteiltes Fenster des Programms", "L4805", false},
    {"imgSplitWindow", 2, Image, "contstep(15)", {120, 1440, 4320, 3240}, "Ein geteiltes Fenster des Programms", "L4805", false},
    {"imgSplitBtn", -1, Image, "contstep(15)", {4080, 1620, 240, 240}, "Schaltfläche zum Teilen", "L4816"},
    {"imgcursorHand2", -1, Image, "contstep(15)", {4080, 1740, 480, 480}, "Mauszeiger", "L4807"},
    {"lblSplitDesc", -1, Label, "contstep(15)", {120, 4740, 6360, 660}, "Die Schaltfläche am Rand teilt das Fenster.", "L4873"},
};

constexpr ControlRow statistics_tip[] = {
    {"lblHeading", 16, Label, "contstep(16)", heading, "Tipp: Statistikfenster", "L4717"},
    {"lblPurpose", 16, Label, "contstep(16)", purpose, "Das Statistikfenster lässt sich frei verschieben.", "L4737"},
    {"imgStatWindow", 0, Image, "contstep(16)", {120, 1440, 4320, 3240}, "Das Statistikfenster des Programms", "L4806"},
    {"imgStatWindow", 1, Image, "contstep(16)", {120, 1440, 4320, 3240}, "Das Statistikfenster des Programms", "L4806", false},
    {"imgStatWindow", 2, Image, "contstep(16)", {120, 1440, 4320, 3240}, "Das Statistikfenster des Programms", "L4806", false},
    {"imgStatWindow", 3, Image, "contstep(16)", {120, 1440, 4320, 3240}, "Das Statistikfenster des Programms", "L4806", false},
    {"imgMouseHand3", -1, Image, "contstep(16)", {600, 1800, 480, 480}, "Mauszeiger", "L4807"},
    {"lblStatdesc", -1, Label, "contstep(16)", {120, 4740, 6360, 660}, "Ziehen Sie das Statistikfenster an die gewünschte Stelle.", "L4876"},
};

constexpr ControlRow summary_page[] = {
    {"lblHeading", 17, Label, "contstep(17)", {120, 120, 5820, 480}, "Fertig", "L4718"},
    {"imgOpen", -1, Image, "contstep(17)", {6000, 120, 480, 480}, "Illustration", "L4808"},
    {"imgNew", -1, Image, "contstep(17)", {6000, 120, 480, 480}, "Illustration", "L4808", false},
    {"lblPurpose", 17, Label, "contstep(17)", purpose, "Diese Einstellungen werden jetzt gespeichert:", "L4738"},
    {"lblSummary", -1, TextBox, "contstep(17)", {120, 1440, 6360, 3900}},
};

constexpr ControlRow bottom_bar[] = {
    {"pbar", -1, ProgressBar, "", {180, 5790, 2640, 240}, "Fortschritt", "L4809"},
    {"Command1", 1, Button, "", {3000, 5700, 1860, 420}, "< Z&urück", "L906"},
    {"Command1", 0, Button, "", {4920, 5700, 1860, 420}, "Wei&ter >", "L905"},
    {"Command1", 2, Button, "", {6960, 5700, 1860, 420}, "Abbrechen", "L901"},
};

// clang-format on

constexpr std::span<const ControlRow> pages[] = {
    intro_page,          folder_page,          unit_page,      patient_page, insulin_page,   medicine_page,
    glucose_target_page, pressure_target_page, chart_page,     entry_page,   style_page,     scheme_page,
    sidebar_page,        start_page,           navigation_tip, splits_tip,   statistics_tip, summary_page,
};
static_assert(std::size(pages) == page_tags.size());

struct Picture {
  std::string_view control;
  int count;  ///< members of the array; 0: no array
  std::string_view resource;
};

/// An array's member n shows resource + n.
constexpr Picture pictures[] = {
    {"imgDiary", 0, "diary"},
    {"imgSidebar", 0, "sidebar"},
    {"imgSidebarMark", 0, "sidebar_mark"},
    {"imgStart", 0, "start"},
    {"imgStartMark", 0, "start_mark"},
    {"imgNavBar", 5, "navbar"},
    {"imgSplitWindow", 3, "splits"},
    {"imgStatWindow", 4, "stats"},
    {"imgSplitBtn", 0, "split_button"},
    {"imgCursorHand", 0, "hand"},
    {"imgcursorHand2", 0, "hand"},
    {"imgMouseHand3", 0, "hand"},
    {"imgOpen", 0, "open"},
    {"imgNew", 0, "new"},
    {"imgDisplayStyle", 0, "style0"},
};

struct Limit {
  std::string_view control;
  int characters;
};

/// What the columns can hold: `patdat` 50 characters, a plan item's text with its numbers 255.
constexpr Limit limits[] = {
    {"txtFirstName", 50}, {"txtName", 50},   {"txtStreet", 50},  {"txtZIP", 50},
    {"txtCity", 50},      {"txtMedik", 100}, {"cbInsulin", 100}, {"txtvorgabe", 10},
};

void add_rows(form::Form& form, std::span<const ControlRow> rows) {
  for (const ControlRow& row : rows) form.add(row);
}

void set_pictures(form::Form& form) {
  for (const Picture& row : pictures) {
    if (row.count == 0) form.at(row.control).set_picture(row.resource);
    for (int n = 0; n < row.count; ++n)
      form.at(row.control, n).set_picture(std::string(row.resource) + std::to_string(n));
  }
}

void set_limits(form::Form& form) {
  for (const Limit& row : limits) {
    if (form::Control* control = form.find(row.control)) control->set_maximum(row.characters);
    for (form::Control* control : form.array(row.control)) control->set_maximum(row.characters);
  }
}

}  // namespace

void build_form(form::Form& form) {
  form.set_caption("Erste Schritte");
  form.set_tag("L4650");
  add_rows(form, shared_controls);
  for (std::size_t n = 0; n < std::size(pages); ++n) {
    form.add({"contstep", static_cast<int>(n), Frame, "", page, "", page_tags[n], false});
    add_rows(form, pages[n]);
  }
  add_rows(form, bottom_bar);
  set_pictures(form);
  set_limits(form);
}

}  // namespace wizard

#include "tests/engine/model/play.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "tests/engine/test_database.h"

namespace engine::test::model {
namespace {

/// A recordset of so many rows is read while it is used, and until then keeps others from committing.
constexpr std::size_t rows_of_a_long_result = 200;

std::string text_of(const Value& value) {
  if (is_null(value)) return "Null";
  const auto* text = std::get_if<std::string>(&value);
  return text ? "'" + *text + "'" : to_text(value);
}

std::string text_of(const Errors& errors) {
  std::string text;
  for (const int error : errors) text += (text.empty() ? "" : " or ") + std::to_string(error);
  return text.empty() ? "no error" : text;
}

std::unique_ptr<Database> with_table(std::unique_ptr<Database> database, const PlainTable& table) {
  const auto definition = database->create_table_def("t");
  for (const PlainField& field : table.fields) {
    const auto made = definition->create_field(field.name, field.type, text_size);
    if (field.numbered) made->set_attributes(attribute_auto_increment);
    definition->fields().append(made);
  }
  const auto index = definition->create_index("only");
  index->set_unique(true);
  index->fields().append(index->create_field("l"));
  definition->indexes().append(index);
  database->table_defs().append(definition);
  return database;
}

PlainTable first_table() {
  PlainTable table;
  const std::pair<const char*, DataType> fields[] = {
      {"id", DataType::Long}, {"b", DataType::Boolean}, {"y", DataType::Byte},   {"i", DataType::Integer},
      {"l", DataType::Long},  {"s", DataType::Single},  {"d", DataType::Double}, {"t", DataType::Date},
      {"x", DataType::Text},  {"m", DataType::Memo}};
  for (const auto& [name, type] : fields) {
    PlainField field;
    field.name = name;
    field.type = type;
    field.numbered = field.name == "id";
    table.fields.push_back(field);
  }
  return table;
}

}  // namespace

Play::Play(std::unique_ptr<Database> first, OpenFile open_file, unsigned seed)
    : open_file_(std::move(open_file)), random_(seed), committed_(first_table()) {
  hands_[1].name = 1;
  hands_[0].database = with_table(std::move(first), committed_);
  open_hand(hands_[1]);
}

const std::vector<Play::Kind>& Play::kinds() {
  static const std::vector<Kind> all = {{8, "open recordset", &Play::open_recordset},
                                        {3, "close recordset", &Play::close_recordset},
                                        {12, "move", &Play::move},
                                        {10, "add", &Play::add},
                                        {8, "edit", &Play::edit},
                                        {6, "set values", &Play::set_values},
                                        {14, "update", &Play::update},
                                        {6, "delete", &Play::delete_row},
                                        {2, "open a failing query", &Play::open_failing},
                                        {2, "read the failing query", &Play::read_failing},
                                        {4, "begin", &Play::begin},
                                        {3, "commit", &Play::commit},
                                        {3, "roll back", &Play::roll_back},
                                        {2, "close and open", &Play::close_and_open},
                                        {1, "change password", &Play::change_password},
                                        {6, "INSERT", &Play::insert},
                                        {3, "INSERT SELECT", &Play::append},
                                        {1, "INSERT SELECT of many", &Play::append_many},
                                        {3, "UPDATE", &Play::update_rows},
                                        {4, "DELETE", &Play::delete_rows},
                                        {3, "change a rule", &Play::change_rule},
                                        {4, "change the extra field", &Play::change_extra_field},
                                        {2, "remove or add the AutoNumber", &Play::change_numbering},
                                        {2, "change a property", &Play::change_property},
                                        {1, "replace the table", &Play::replace_table}};
  return all;
}

void Play::step() {
  int total = 0;
  for (const Kind& kind : kinds()) total += kind.weight;
  int chosen = below(total);
  const auto kind = std::ranges::find_if(kinds(), [&](const Kind& each) { return (chosen -= each.weight) < 0; });
  Hand& hand = hands_[static_cast<std::size_t>(below(2))];
  steps_.push_back(std::string(hand.name == 0 ? "A" : "B") + " " + kind->name);
  (this->*kind->play)(hand);
  compare(hand);
  // The other handle does not always look: sometimes it goes on with what it knew.
  if (!one_in(3)) compare(other(hand));
}

Value Play::any_value(const PlainField& field) {
  static const char* const texts[] = {"", "a", "Größe", "zehn Zeich", "elf Zeichen", "\xff"};
  if (one_in(6)) return Null{};
  switch (field.type) {
    case DataType::Boolean:
      return one_in(2);
    case DataType::Byte:
      return one_in(12) ? 256 : below(256);
    case DataType::Integer:
      return one_in(12) ? 40000 : below(100);
    case DataType::Long:
      return below(2000);
    case DataType::Single:
      return static_cast<float>(below(1000)) / 8;
    case DataType::Double:
      return one_in(12) ? std::numeric_limits<double>::quiet_NaN() : below(1000) / 7.0;
    case DataType::Date:
      return Date{below(60000) + 0.5};
    default:
      return std::string(texts[one_in(4) ? below(6) : 1 + below(3)]);
  }
}

void Play::disagree(const std::string& what) const { throw Disagreement(what); }

void Play::expect(bool holds, const std::string& what) const {
  if (!holds) disagree(what);
}

bool Play::call(Hand& hand, const Errors& allowed, Lock lock, const std::function<void()>& engine_call) {
  constexpr int in_use = 3045;
  const Hand& neighbour = other(hand);
  const bool reads_on =
      (neighbour.shown && neighbour.shown->rows.size() >= rows_of_a_long_result) || neighbour.failing.rows != nullptr;
  const int error = error_number(engine_call);
  if (error != 0) note("(" + std::to_string(error) + ")");
  if (error == in_use && lock != Lock::NotNeeded && (neighbour.changed || reads_on)) return false;
  Errors expected = allowed;
  if (lock == Lock::Needed && neighbour.changed && expected.empty()) expected = {in_use};
  expect(expected.empty() ? error == 0 : expected.contains(error),
         "expected " + text_of(expected) + ", got " + std::to_string(error));
  return error == 0;
}

void Play::take_number(Hand& hand, std::int32_t number) {
  if (hand.numbers_of != table(hand).identity) hand.numbers.clear();
  hand.numbers_of = table(hand).identity;
  expect(!table(hand).numbers.contains(number) && !hand.numbers.contains(number),
         "the AutoNumber " + std::to_string(number) + " was given before");
  table(hand).numbers.insert(number);
  hand.numbers.insert(number);
}

void Play::open_hand(Hand& hand) {
  hand.database = open_file_(hand.name, password_);
  hand.numbers.clear();
}

void Play::end_transaction(Hand& hand, bool committed) {
  if (committed) committed_ = *hand.changed;
  hand.changed.reset();
}

void Play::compare(Hand& hand) {
  if (!hand.database) return;
  compare_rows(hand);
  compare_recordset(hand);
  compare_definition(hand);
}

void Play::compare_values(const Recordset& rows, const std::string& name, const Value& expected,
                          const char* where) const {
  const Value found = rows.value(name);
  expect(found == expected, std::string(where) + ": " + name + " is " + text_of(found) + ", not " + text_of(expected));
}

void Play::compare_rows(Hand& hand) {
  PlainTable& expected = table(hand);
  const PlainField* const numbered = expected.numbered_field();
  const auto rows = hand.database->open_forward_only("SELECT * FROM t");
  expect(rows->field_count() == static_cast<std::int32_t>(expected.fields.size()), "number of fields");
  for (std::size_t i = 0; i < expected.fields.size(); ++i) {
    expect(rows->field_name(static_cast<std::int32_t>(i)) == expected.fields[i].name, "names of fields");
  }
  for (PlainRow& row : expected.rows) {
    expect(!rows->eof(), "rows are missing");
    for (const PlainField& field : expected.fields) {
      Value& value = row.values[field.identity];
      if (&field == numbered && value == Value{untold_number}) {
        value = rows->value(field.name);
        take_number(hand, std::get<std::int32_t>(value));
      }
      compare_values(*rows, field.name, value, "table");
    }
    rows->move_next();
  }
  expect(rows->eof(), "more rows than expected");
}

void Play::compare_recordset(Hand& hand) {
  if (!hand.shown) return;
  const PlainRecordset& shown = *hand.shown;
  const bool gone = shown.table != table(hand).identity;
  const int error = error_number([&] { static_cast<void>(hand.rows->eof()); });
  expect(error == (gone ? 3420 : 0), "eof() of the recordset gives " + std::to_string(error));
  if (gone) return;
  expect(hand.rows->eof() == shown.eof(), std::string("EOF is not ") + (shown.eof() ? "true" : "false"));
  expect(hand.rows->bof() == shown.bof(), std::string("BOF is not ") + (shown.bof() ? "true" : "false"));
  if (hand.shows_whole_table) {
    expect(hand.rows->record_count() == static_cast<std::int32_t>(shown.remaining()), "number of records");
  }
  const Errors errors = shown.editing == PlainRecordset::Editing::Adding ? Errors{} : shown.row_errors();
  for (const PlainRecordset::Column& column : shown.columns) {
    const int found = error_number([&] { hand.rows->value(column.name); });
    expect(errors.empty() ? found == 0 : errors.contains(found),
           "reading " + column.name + " gives " + std::to_string(found) + ", not " + text_of(errors));
    if (!errors.empty()) continue;
    const auto edited = shown.edited.find(column.field);
    const bool editing = shown.editing != PlainRecordset::Editing::None;
    // A column whose field does not exist any more shows its old value, or nothing, which for Yes/No is No.
    const bool unsure = !editing && shown.rows[shown.at].unsure.contains(column.field);
    if (unsure || (editing && !table(hand).shows(column.field, column.name))) continue;
    if (editing && edited != shown.edited.end()) {
      compare_values(*hand.rows, column.name, edited->second, "edited row");
    } else if (shown.editing != PlainRecordset::Editing::Adding) {
      compare_values(*hand.rows, column.name, shown.rows[shown.at].values.at(column.field), "recordset");
    }
  }
}

void Play::compare_definition(Hand& hand) {
  if (!hand.definition) return;
  const bool gone = hand.defined_table != table(hand).identity;
  const int error = error_number([&] { hand.definition->name(); });
  expect(error == (gone ? 3420 : 0), "the definition gives " + std::to_string(error));
  if (gone) return;
  expect(hand.definition->connect() == table(hand).connect, "Connect is '" + hand.definition->connect() + "'");
  expect(hand.definition->source_table_name() == table(hand).source_name,
         "SourceTableName is '" + hand.definition->source_table_name() + "'");
}

}  // namespace engine::test::model

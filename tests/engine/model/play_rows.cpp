#include <algorithm>
#include <utility>

#include "tests/engine/model/play.h"

namespace engine::test::model {

using Editing = PlainRecordset::Editing;

void Play::open_recordset(Hand& hand) {
  if (hand.shown && !one_in(3)) return;
  close_recordset(hand);
  hand.shows_whole_table = one_in(2);
  hand.rows = hand.database->open_recordset(hand.shows_whole_table ? "t" : "SELECT l, x, b, i FROM t");
  std::vector<std::string> names;
  if (!hand.shows_whole_table) names = {"l", "x", "b", "i"};
  hand.shown.emplace(table(hand), names);
  // The columns are in the order of the SELECT; the model finds them by name.
}

void Play::close_recordset(Hand& hand) {
  if (!hand.shown) return;
  // The object is kept, so that close() must release what it held, not its destructor.
  hand.rows->close();
  hand.shown.reset();
}

void Play::move(Hand& hand) {
  if (!hand.shown) return;
  const bool gone = hand.shown->table != table(hand).identity;
  const int way = below(4);
  note(way == 0 ? "first" : way == 1 ? "last" : way == 2 ? "next" : "previous");
  Errors errors{3420};
  if (!gone) errors = way < 2 ? hand.shown->move_to_end(way == 1) : hand.shown->move_by_one(way == 2);
  constexpr void (Recordset::*moves[])() = {&Recordset::move_first, &Recordset::move_last, &Recordset::move_next,
                                            &Recordset::move_previous};
  // A table that another handle has deleted is missing for this one as soon as it looks.
  call(hand, gone ? Errors{0, 3420, 3021} : errors, Lock::NotNeeded, [&] { (*hand.rows.*moves[way])(); });
}

void Play::add(Hand& hand) {
  if (!hand.shown) return;
  PlainTable& changed = table(hand);
  PlainRecordset& shown = *hand.shown;
  const bool gone = shown.table != changed.identity;
  const bool added = call(hand, gone ? Errors{3420} : Errors{}, Lock::MayBeNeeded, [&] { hand.rows->add_new(); });
  shown.editing = Editing::None;
  if (!added) return;
  shown.editing = Editing::Adding;
  shown.edited = changed.new_values();
  shown.assigned.clear();
  const PlainField* const numbered = changed.numbered_field();
  const bool shows_number = numbered != nullptr && std::ranges::any_of(shown.columns, [&](const auto& column) {
                              return column.field == numbered->identity;
                            });
  if (shows_number) {
    const auto number = std::get<std::int32_t>(hand.rows->value(numbered->name));
    note("number " + std::to_string(number));
    take_number(hand, number);
    shown.edited[numbered->identity] = number;
  }
  if (one_in(2)) set_values(hand);
  if (one_in(2)) update(hand);
}

void Play::edit(Hand& hand) {
  if (!hand.shown) return;
  const bool gone = hand.shown->table != table(hand).identity;
  // Without a current row, the engine does not look for the table.
  const Errors errors = gone ? Errors{3420, 3021, 3167} : hand.shown->row_errors();
  // Nobody has to be waited for before update().
  if (!call(hand, errors, Lock::NotNeeded, [&] { hand.rows->edit(); })) return;
  hand.shown->editing = Editing::Changing;
  hand.shown->edited.clear();
  hand.shown->assigned.clear();
  if (one_in(2)) set_values(hand);
  if (one_in(2)) update(hand);
}

void Play::set_values(Hand& hand) {
  if (!hand.shown || hand.shown->editing == Editing::None) return;
  PlainRecordset& shown = *hand.shown;
  if (shown.table != table(hand).identity) return;
  for (const PlainRecordset::Column& column : shown.columns) {
    const PlainField* const field = table(hand).field(column.field);
    if (one_in(2) || (field != nullptr && field->numbered)) continue;
    // A change by another handle may not be known before update().
    const bool known = table(hand).shows(column.field, column.name);
    const PlainField sample = field != nullptr ? *field : PlainField{};
    const Value value = any_value(sample);
    Value stored;
    const Errors errors = known ? store(sample, value, stored) : Errors{3265, 3421};
    int error = 0;
    Errors allowed{0, 3265, 3315, 3163, 3421};
    // A field that does not exist any more may have been the AutoNumber.
    if (field == nullptr) allowed.insert(3164);
    call(hand, allowed, Lock::NotNeeded, [&] {
      try {
        hand.rows->set_value(column.name, value);
      } catch (const support::RuntimeError& raised) {
        error = raised.number();
        throw;
      }
    });
    const bool accepted = error == 0;
    const bool rule_may_be_new = errors.contains(3315) || (error == 3315 && errors.empty()) || !known;
    // It may not be known either that a field has its name again.
    if (!rule_may_be_new && error != 3265) {
      if (accepted != errors.empty()) disagree("setting " + column.name + " gives " + std::to_string(error));
    }
    if (!accepted) continue;
    shown.edited[column.field] = known ? stored : value;
    shown.assigned.insert(column.field);
  }
}

Errors Play::errors_of_update(Hand& hand) {
  PlainTable& changed = table(hand);
  const PlainRecordset& shown = *hand.shown;
  const bool adding = shown.editing == Editing::Adding;
  if (shown.table != changed.identity) return {3420};
  Errors errors;
  const int row = adding ? 0 : shown.rows[shown.at].row;
  if (!adding && changed.row(row) == nullptr) errors.insert(3167);
  for (const auto& [identity, value] : shown.edited) {
    const PlainField* const field = changed.field(identity);
    const auto column = std::ranges::find(shown.columns, identity, &PlainRecordset::Column::field);
    const bool known = column != shown.columns.end() && changed.shows(identity, column->name);
    // A default value of a new row disappears with its field.
    if (shown.assigned.contains(identity) && !known) errors.insert(3265);
    if (field == nullptr) continue;
    if (field->required && is_null(value)) errors.insert(3314);
    Value stored;
    if (!field->numbered) errors.merge(store(*field, value, stored));
    if (field->name == "l" && changed.is_taken(value, row)) errors.insert(3022);
  }
  if (adding) {
    for (const PlainField& field : changed.fields) {
      const bool no_value = !shown.edited.contains(field.identity) && field.type != DataType::Boolean;
      if (field.required && !field.numbered && no_value) errors.insert(3314);
    }
  }
  return errors;
}

void Play::update(Hand& hand) {
  if (!hand.shown) return;
  PlainRecordset& shown = *hand.shown;
  const bool gone = shown.table != table(hand).identity;
  if (shown.editing == Editing::None) {
    call(hand, gone ? Errors{3020, 3420} : Errors{3020}, Lock::NotNeeded, [&] { hand.rows->update(); });
  } else if (call(hand, errors_of_update(hand), Lock::Needed, [&] { hand.rows->update(); })) {
    finish_update(hand);
  }
}

void Play::finish_update(Hand& hand) {
  PlainTable& changed = table(hand);
  PlainRecordset& shown = *hand.shown;
  const bool adding = shown.editing == Editing::Adding;
  if (adding) changed.rows.push_back({new_identity(), changed.new_values()});
  PlainRow& row = adding ? changed.rows.back() : *changed.row(shown.rows[shown.at].row);
  for (const auto& [identity, value] : shown.edited) {
    if (changed.field(identity) != nullptr) row.values[identity] = value;
  }
  if (adding) shown.rows.push_back({row.identity, changed.new_values(), false, {}});
  PlainRecordset::Shown& stored = adding ? shown.rows.back() : shown.rows[shown.at];
  for (const auto& [identity, value] : shown.edited) stored.values[identity] = value;
  for (const PlainRecordset::Column& column : shown.columns) {
    if (changed.shows(column.field, column.name)) continue;
    stored.unsure.insert(column.field);
    stored.values.try_emplace(column.field, Null{});
  }
  shown.editing = Editing::None;
}

void Play::delete_row(Hand& hand) {
  if (!hand.shown) return;
  PlainTable& changed = table(hand);
  PlainRecordset& shown = *hand.shown;
  const bool gone = shown.table != changed.identity;
  Errors errors = gone ? Errors{3420, 3021, 3167} : shown.row_errors();
  if (errors.empty() && changed.row(shown.rows[shown.at].row) == nullptr) errors = {3167};
  const bool row_is_current = !gone && shown.row_errors().empty();
  const bool deleted = call(hand, errors, Lock::Needed, [&] { hand.rows->delete_row(); });
  if (row_is_current) shown.editing = Editing::None;
  if (!deleted) return;
  std::erase_if(changed.rows, [&](const PlainRow& row) { return row.identity == shown.rows[shown.at].row; });
  shown.rows[shown.at].deleted = true;
}

void Play::open_failing(Hand& hand) {
  const PlainTable& source = table(hand);
  if (source.rows.empty()) return;
  const auto count = static_cast<int>(source.rows.size());
  const int bad = one_in(2) ? count - 1 : below(count);
  const int l = table(hand).field("l")->identity;
  FailingQuery& failing = hand.failing;
  failing = {};
  failing.table = source.identity;
  const Value divisor = source.rows[static_cast<std::size_t>(bad)].values.at(l);
  if (is_null(divisor)) return;
  for (const PlainRow& row : source.rows) {
    failing.fails = row.values.at(l) == divisor;
    if (failing.fails) break;
    const Value& number = row.values.at(l);
    failing.numbers.push_back(is_null(number) ? 0 : std::get<std::int32_t>(number));
  }
  // With a column that is in no index, the rows come in the table's order.
  const std::string query = "SELECT l, m, 1/(l-" + to_text(divisor) + ") FROM t";
  if (!call(hand, failing.numbers.empty() ? Errors{11} : Errors{}, Lock::NotNeeded,
            [&] { failing.rows = hand.database->open_recordset(query); })) {
    failing = {};
  }
}

void Play::read_failing(Hand& hand) {
  FailingQuery& failing = hand.failing;
  if (!failing.rows) return;
  if (failing.table != table(hand).identity) {
    const int error = error_number([&] { static_cast<void>(failing.rows->eof()); });
    expect(error == 3420, "eof() of a query on a table that is gone gives " + std::to_string(error));
    failing = {};
    return;
  }
  for (int rows = one_in(2) ? 20 : 2000; rows > 0; --rows) {
    const Value number = failing.rows->value("l");
    expect(is_null(number) ? failing.numbers[failing.at] == 0 : number == Value{failing.numbers[failing.at]},
           "the failing query's row " + std::to_string(failing.at));
    const bool last = failing.at + 1 == failing.numbers.size();
    if (!call(hand, last ? Errors{11} : Errors{}, Lock::NotNeeded, [&] { failing.rows->move_next(); })) {
      failing = {};
      return;
    }
    ++failing.at;
  }
}

}  // namespace engine::test::model

#include <algorithm>
#include <utility>

#include "tests/engine/model/play.h"

namespace engine::test::model {
namespace {

constexpr std::size_t most_rows = 500;

std::int32_t whole(const PlainRow& row, int field) {
  const Value& value = row.values.at(field);
  return is_null(value) ? 0 : std::get<std::int32_t>(value);
}

}  // namespace

void Play::begin(Hand& hand) {
  const bool inside = hand.changed.has_value();
  if (call(hand, inside ? Errors{3219} : Errors{}, inside ? Lock::NotNeeded : Lock::Needed,
           [&] { hand.database->begin_transaction(); })) {
    hand.changed = committed_;
  }
}

void Play::commit(Hand& hand) {
  const bool inside = hand.changed.has_value();
  const bool committed = call(hand, inside ? Errors{} : Errors{3034}, inside ? Lock::Needed : Lock::NotNeeded,
                              [&] { hand.database->commit_transaction(); });
  // A commit that cannot get the lock has rolled back.
  if (inside) end_transaction(hand, committed);
}

void Play::roll_back(Hand& hand) {
  const bool inside = hand.changed.has_value();
  call(hand, inside ? Errors{} : Errors{3034}, Lock::NotNeeded, [&] { hand.database->rollback_transaction(); });
  if (inside) end_transaction(hand, false);
}

void Play::close_and_open(Hand& hand) {
  hand.shown.reset();
  hand.failing = {};
  hand.definition.reset();
  hand.database->close();
  hand.rows.reset();
  hand.changed.reset();
  open_hand(hand);
}

void Play::change_password(Hand& hand) {
  Hand& neighbour = other(hand);
  static const char* const passwords[] = {"", "geheim", "Wort 2"};
  const std::string password = passwords[below(3)];
  const bool alone = one_in(3);
  if (alone) {
    close_and_open(neighbour);
    neighbour.database->close();
    neighbour.database.reset();
  }
  const Errors errors = hand.changed ? Errors{3246, 3045} : alone ? Errors{} : Errors{3045};
  if (call(hand, errors, Lock::NotNeeded, [&] { hand.database->new_password(password_, password); })) {
    password_ = password;
    // A recordset that was half read ends when the key changes.
    close_and_open(hand);
  }
  if (alone) open_hand(neighbour);
}

void Play::insert(Hand& hand) {
  PlainTable& changed = table(hand);
  const PlainField* const numbered = changed.numbered_field();
  const bool with_number = numbered != nullptr && one_in(4);
  const std::int32_t number = changed.numbers.empty() ? 3 : *changed.numbers.rbegin() + 2;
  const int l = below(2000), i = below(100);
  const std::string sql =
      with_number ? "INSERT INTO t (id,x,l,i) VALUES (" + std::to_string(number) + ",'b'," + std::to_string(l) + "," +
                        std::to_string(i) + ")"
                  : "INSERT INTO t (x,l,i) VALUES ('b'," + std::to_string(l) + "," + std::to_string(i) + ")";
  note(sql);
  Errors errors;
  if (changed.is_taken(l, 0)) errors.insert(3022);
  for (const PlainField& field : changed.fields) {
    if (field.required && field.name != "x" && field.name != "l" && field.name != "i") errors.insert(3314);
  }
  if (!call(hand, errors, Lock::Needed, [&] { hand.database->execute(sql); })) return;
  PlainRow row{new_identity(), changed.new_values()};
  row.values[changed.field("x")->identity] = std::string("b");
  row.values[changed.field("l")->identity] = l;
  row.values[changed.field("i")->identity] = i;
  if (with_number && !hand.numbers.contains(number)) {
    row.values[numbered->identity] = number;
    take_number(hand, number);
  } else if (with_number) {
    row.values[numbered->identity] = number;
  }
  changed.rows.push_back(std::move(row));
}

void Play::append(Hand& hand) {
  PlainTable& changed = table(hand);
  const int limit = below(100);
  if (changed.rows.size() > most_rows) return;
  const std::string sql = "INSERT INTO t (x,i,b) SELECT x,i,b FROM t WHERE i<" + std::to_string(limit);
  note(sql);
  const int x = changed.field("x")->identity, i = changed.field("i")->identity, b = changed.field("b")->identity;
  const bool none = std::ranges::any_of(changed.fields, [](const PlainField& field) {
    return field.required && field.name != "x" && field.name != "i" && field.name != "b";
  });
  std::vector<PlainRow> rows;
  for (const PlainRow& row : changed.rows) {
    const Value& text = row.values.at(x);
    if (none || is_null(row.values.at(i)) || whole(row, i) >= limit) continue;
    if (changed.field("x")->required && is_null(text)) continue;
    if (!changed.field("x")->takes_empty && text == Value{std::string()}) continue;
    rows.push_back({new_identity(), changed.new_values()});
    for (const int field : {x, i, b}) rows.back().values[field] = row.values.at(field);
  }
  if (!call(hand, {}, Lock::Needed, [&] { hand.database->execute(sql); })) return;
  expect(hand.database->records_affected() == static_cast<std::int32_t>(rows.size()), "number of rows appended");
  std::ranges::move(rows, std::back_inserter(changed.rows));
}

void Play::append_many(Hand& hand) {
  PlainTable& changed = table(hand);
  if (changed.rows.empty() || changed.rows.size() > most_rows) return;
  while (changed.rows.size() <= 200) {
    const std::size_t before = changed.rows.size();
    append(hand);
    if (table(hand).rows.size() == before) return;
    compare(hand);
  }
}

void Play::update_rows(Hand& hand) {
  PlainTable& changed = table(hand);
  const int limit = below(2000), i = below(100);
  const std::string sql = "UPDATE t SET i=" + std::to_string(i) + ", b=Null WHERE l<" + std::to_string(limit);
  note(sql);
  if (!call(hand, {}, Lock::Needed, [&] { hand.database->execute(sql); })) return;
  const int l = changed.field("l")->identity;
  for (PlainRow& row : changed.rows) {
    if (is_null(row.values.at(l)) || whole(row, l) >= limit) continue;
    row.values[changed.field("i")->identity] = i;
    row.values[changed.field("b")->identity] = false;
  }
}

void Play::delete_rows(Hand& hand) {
  PlainTable& changed = table(hand);
  const int i = changed.field("i")->identity;
  const int limit = changed.rows.size() > 100 ? 100 : one_in(6) ? 1000 : below(30);
  const std::string sql = limit == 1000 ? "DELETE FROM t" : "DELETE FROM t WHERE i<" + std::to_string(limit);
  note(sql);
  if (!call(hand, {}, Lock::Needed, [&] { hand.database->execute(sql); })) return;
  std::erase_if(changed.rows, [&](const PlainRow& row) {
    return limit == 1000 || (!is_null(row.values.at(i)) && whole(row, i) < limit);
  });
}

void Play::change_rule(Hand& hand) {
  PlainField& field = *table(hand).field(one_in(3) ? "i" : "x");
  const bool required = one_in(2);
  const bool wanted = one_in(2);
  if (!required && field.name == "i") return;
  note(field.name + (required ? " required " : " takes empty texts ") + (wanted ? "yes" : "no"));
  const bool done = call(hand, {}, Lock::Needed, [&] {
    const auto stored = hand.database->table_defs().item("t")->fields().item(field.name);
    required ? stored->set_required(wanted) : stored->set_allow_zero_length(wanted);
  });
  if (done) (required ? field.required : field.takes_empty) = wanted;
}

void Play::change_extra_field(Hand& hand) {
  PlainTable& changed = table(hand);
  const bool there = changed.field("e") != nullptr || changed.field("f") != nullptr;
  const auto definition = hand.database->table_defs().item("t");
  if (!there) {
    constexpr DataType types[] = {DataType::Long, DataType::Text, DataType::Boolean, DataType::Double};
    PlainField field;
    field.name = one_in(2) ? "e" : "f";
    field.type = types[below(4)];
    note("add " + field.name);
    const auto made = definition->create_field(field.name, field.type, text_size);
    if (!call(hand, {}, Lock::Needed, [&] { definition->fields().append(made); })) return;
    for (PlainRow& row : changed.rows) {
      row.values[field.identity] = field.type == DataType::Boolean ? Value{false} : Value{Null{}};
    }
    changed.fields.push_back(field);
    return;
  }
  PlainField& field = *(changed.field("e") != nullptr ? changed.field("e") : changed.field("f"));
  const bool rename = one_in(2);
  const std::string name = field.name == "e" ? "f" : "e";
  note((rename ? "rename " : "remove ") + field.name);
  if (!call(hand, {}, Lock::Needed, [&] {
        rename ? definition->fields().item(field.name)->set_name(name) : definition->fields().remove(field.name);
      })) {
    return;
  }
  if (rename) {
    field.name = name;
  } else {
    const int identity = field.identity;
    std::erase_if(changed.fields, [&](const PlainField& each) { return each.identity == identity; });
  }
}

void Play::change_numbering(Hand& hand) {
  PlainTable& changed = table(hand);
  const auto definition = hand.database->table_defs().item("t");
  if (const PlainField* numbered = changed.numbered_field()) {
    note("remove");
    const int identity = numbered->identity;
    if (!call(hand, {}, Lock::Needed, [&] { definition->fields().remove("id"); })) return;
    std::erase_if(changed.fields, [&](const PlainField& each) { return each.identity == identity; });
    return;
  }
  note("add");
  const auto made = definition->create_field("id", DataType::Long);
  made->set_attributes(attribute_auto_increment);
  if (!call(hand, {}, Lock::Needed, [&] { definition->fields().append(made); })) return;
  PlainField field;
  field.name = "id";
  field.type = DataType::Long;
  field.numbered = true;
  for (PlainRow& row : changed.rows) row.values[field.identity] = untold_number;
  changed.fields.push_back(field);
}

void Play::change_property(Hand& hand) {
  if (!hand.definition || hand.defined_table != table(hand).identity) {
    hand.definition = hand.database->table_defs().item("t");
    hand.defined_table = table(hand).identity;
  }
  const bool connect = hand.name == 0;
  const std::string text = std::to_string(below(1000));
  note((connect ? "Connect " : "SourceTableName ") + text);
  if (!call(hand, {}, Lock::Needed,
            [&] { connect ? hand.definition->set_connect(text) : hand.definition->set_source_table_name(text); })) {
    return;
  }
  (connect ? table(hand).connect : table(hand).source_name) = text;
}

void Play::replace_table(Hand& hand) {
  if (hand.changed) return;
  if (!call(hand, {}, Lock::Needed, [&] { hand.database->begin_transaction(); })) return;
  PlainTable fresh;
  const auto definition = hand.database->create_table_def("t");
  for (const PlainField& old : committed_.fields) {
    PlainField field = old;
    field.identity = new_identity();
    field.required = field.takes_empty = false;
    const auto made = definition->create_field(field.name, field.type, text_size);
    if (field.numbered) made->set_attributes(attribute_auto_increment);
    definition->fields().append(made);
    fresh.fields.push_back(field);
  }
  hand.database->table_defs().remove("t");
  const auto index = definition->create_index("only");
  index->set_unique(true);
  index->fields().append(index->create_field("l"));
  definition->indexes().append(index);
  hand.database->table_defs().append(definition);
  hand.changed = fresh;
  if (one_in(2)) return;
  end_transaction(hand, call(hand, {}, Lock::Needed, [&] { hand.database->commit_transaction(); }));
}

}  // namespace engine::test::model

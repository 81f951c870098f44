#include "tests/automation/server/layout_objects.h"

#include "support/encoding.h"

namespace test_server {
namespace {

constexpr auto system_attributes = static_cast<std::int32_t>(0x80000002);

/// An item of a collection by its position or name.
template <typename Collection>
auto item_of(Collection& collection, const VARIANT& which) {
  return V_VT(&which) == VT_BSTR ? collection.item(text_of(which)) : collection.item(number_of(which));
}

Variant refreshed() {
  if (strict) throw support::RuntimeError(3001, "Invalid argument.");
  return {};
}

void append_field(engine::Fields& fields, const std::shared_ptr<engine::Field>& field) {
  try {
    fields.append(field);
  } catch (const support::RuntimeError& error) {
    if (strict && error.number() == 3191) throw support::RuntimeError(3380, "Field already exists.");
    throw;
  }
}

// The row in a table of members, for each kind of property.
template <typename Self, auto held, auto read, auto write>
constexpr Member<Self> text_property(const wchar_t* name) {
  return {name, [](Self& self, const Arguments&) { return Variant::of_text(((*(self.*held)).*read)()); },
          [](Self& self, const VARIANT& value) { ((*(self.*held)).*write)(text_of(value)); }};
}

template <typename Self, auto held, auto read, auto write>
constexpr Member<Self> long_property(const wchar_t* name) {
  return {name, [](Self& self, const Arguments&) { return Variant::of_long(((*(self.*held)).*read)()); },
          [](Self& self, const VARIANT& value) { ((*(self.*held)).*write)(number_of(value)); }};
}

template <typename Self, auto held, auto read, auto write>
constexpr Member<Self> flag_property(const wchar_t* name) {
  return {name, [](Self& self, const Arguments&) { return Variant::of_flag(((*(self.*held)).*read)()); },
          [](Self& self, const VARIANT& value) { ((*(self.*held)).*write)(flag_of(value)); }};
}

}  // namespace

void TableList::read() {
  names_.clear();
  engine::TableDefs& tables = database_->table_defs();
  const std::int32_t count = tables.count();
  for (std::int32_t i = 0; i < count; ++i) names_.push_back(tables.item(i)->name());
}

std::shared_ptr<engine::TableDef> TableList::item(const VARIANT& which) const {
  if (V_VT(&which) != VT_BSTR) {
    const std::int32_t position = number_of(which);
    if (position == 0) {
      const auto own = database_->create_table_def("MSysObjects");
      own->set_attributes(system_attributes);
      return own;
    }
    if (position > 0 && position < count()) {
      return database_->table_defs().item(names_[static_cast<std::size_t>(position) - 1]);
    }
    throw support::RuntimeError(3265, "Item not found in this collection.");
  }
  const std::string name = text_of(which);
  const auto same = [&](const std::string& known) { return support::equal_ignoring_case(known, name); };
  if (std::ranges::none_of(names_, same)) throw support::RuntimeError(3265, "Item not found in this collection.");
  return database_->table_defs().item(name);
}

std::span<const Member<FieldObject>> FieldObject::members() {
  using F = engine::Field;
  using Self = FieldObject;
  constexpr auto field = &Self::field;
  static constexpr Member<Self> table[] = {
      text_property<Self, field, &F::name, &F::set_name>(L"Name"),
      {L"Type",
       [](Self& self, const Arguments&) { return Variant::of_short(static_cast<std::int16_t>(self.field->type())); }},
      long_property<Self, field, &F::size, &F::set_size>(L"Size"),
      long_property<Self, field, &F::attributes, &F::set_attributes>(L"Attributes"),
      text_property<Self, field, &F::default_value, &F::set_default_value>(L"DefaultValue"),
      flag_property<Self, field, &F::required, &F::set_required>(L"Required"),
      flag_property<Self, field, &F::allow_zero_length, &F::set_allow_zero_length>(L"AllowZeroLength"),
      {L"OrdinalPosition",
       [](Self& self, const Arguments&) { return Variant::of_short(self.field->ordinal_position()); },
       [](Self& self, const VARIANT& value) { self.field->set_ordinal_position(short_of(value)); }},
      text_property<Self, field, &F::validation_rule, &F::set_validation_rule>(L"ValidationRule"),
      text_property<Self, field, &F::validation_text, &F::set_validation_text>(L"ValidationText"),
  };
  return table;
}

std::span<const Member<FieldsObject>> FieldsObject::members() {
  using Self = FieldsObject;
  static constexpr Member<Self> table[] = {
      {L"Count",
       [](Self& self, const Arguments&) { return Variant::of_short(static_cast<std::int16_t>(self.fields->count())); }},
      {L"Item",
       [](Self& self, const Arguments& call) { return new_object<FieldObject>(item_of(*self.fields, call[0])); }},
      {L"Append",
       [](Self& self, const Arguments& call) {
         append_field(*self.fields, object_of<FieldObject>(call[0]).field);
         return Variant();
       }},
      {L"Delete",
       [](Self& self, const Arguments& call) {
         self.fields->remove(call.text(0));
         return Variant();
       }},
      {L"Refresh", [](Self&, const Arguments&) { return refreshed(); }},
  };
  return table;
}

std::span<const Member<IndexObject>> IndexObject::members() {
  using I = engine::Index;
  using Self = IndexObject;
  constexpr auto index = &Self::index;
  static constexpr Member<Self> table[] = {
      {L"Name", [](Self& self, const Arguments&) { return Variant::of_text(self.index->name()); }},
      flag_property<Self, index, &I::primary, &I::set_primary>(L"Primary"),
      flag_property<Self, index, &I::unique, &I::set_unique>(L"Unique"),
      flag_property<Self, index, &I::required, &I::set_required>(L"Required"),
      flag_property<Self, index, &I::ignore_nulls, &I::set_ignore_nulls>(L"IgnoreNulls"),
      flag_property<Self, index, &I::clustered, &I::set_clustered>(L"Clustered"),
      {L"CreateField",
       [](Self& self, const Arguments& call) {
         if (call.count() < 2) return new_object<FieldObject>(self.index->create_field(call.text(0)));
         const auto type = static_cast<engine::DataType>(short_of(call[1]));
         return new_object<FieldObject>(self.index->create_field(call.text(0), type));
       }},
      {L"Fields",
       [](Self& self, const Arguments&) {
         return new_object<FieldsObject>(std::shared_ptr<engine::Fields>(self.index, &self.index->fields()));
       }},
  };
  return table;
}

std::span<const Member<IndexesObject>> IndexesObject::members() {
  using Self = IndexesObject;
  static constexpr Member<Self> table[] = {
      {L"Count", [](Self& self,
                    const Arguments&) { return Variant::of_short(static_cast<std::int16_t>(self.indexes->count())); }},
      {L"Item",
       [](Self& self, const Arguments& call) { return new_object<IndexObject>(item_of(*self.indexes, call[0])); }},
      {L"Append",
       [](Self& self, const Arguments& call) {
         self.indexes->append(object_of<IndexObject>(call[0]).index);
         return Variant();
       }},
      {L"Delete",
       [](Self& self, const Arguments& call) {
         self.indexes->remove(call.text(0));
         return Variant();
       }},
      {L"Refresh", [](Self&, const Arguments&) { return refreshed(); }},
  };
  return table;
}

std::span<const Member<TableDefObject>> TableDefObject::members() {
  using T = engine::TableDef;
  using Self = TableDefObject;
  constexpr auto held = &Self::table;
  static constexpr Member<Self> rows[] = {
      {L"Name", [](Self& self, const Arguments&) { return Variant::of_text(self.table->name()); },
       [](Self& self, const VARIANT& value) {
         self.table->set_name(text_of(value));
         self.tables->read();
       }},
      long_property<Self, held, &T::attributes, &T::set_attributes>(L"Attributes"),
      text_property<Self, held, &T::connect, &T::set_connect>(L"Connect"),
      text_property<Self, held, &T::source_table_name, &T::set_source_table_name>(L"SourceTableName"),
      text_property<Self, held, &T::validation_rule, &T::set_validation_rule>(L"ValidationRule"),
      text_property<Self, held, &T::validation_text, &T::set_validation_text>(L"ValidationText"),
      {L"CreateField",
       [](Self& self, const Arguments& call) {
         const auto type = static_cast<engine::DataType>(short_of(call[1]));
         return new_object<FieldObject>(call.count() < 3
                                            ? self.table->create_field(call.text(0), type)
                                            : self.table->create_field(call.text(0), type, number_of(call[2])));
       }},
      {L"CreateIndex",
       [](Self& self, const Arguments& call) {
         return new_object<IndexObject>(self.table->create_index(call.text(0)));
       }},
      {L"Fields",
       [](Self& self, const Arguments&) {
         return new_object<FieldsObject>(std::shared_ptr<engine::Fields>(self.table, &self.table->fields()));
       }},
      {L"Indexes",
       [](Self& self, const Arguments&) {
         return new_object<IndexesObject>(std::shared_ptr<engine::Indexes>(self.table, &self.table->indexes()));
       }},
  };
  return rows;
}

std::span<const Member<TableDefsObject>> TableDefsObject::members() {
  using Self = TableDefsObject;
  static constexpr Member<Self> rows[] = {
      {L"Count",
       [](Self& self, const Arguments&) {
         self.tables->database().table_defs();
         return Variant::of_short(static_cast<std::int16_t>(self.tables->count()));
       }},
      {L"Item",
       [](Self& self, const Arguments& call) {
         return new_object<TableDefObject>(self.tables->item(call[0]), self.tables);
       }},
      {L"Append",
       [](Self& self, const Arguments& call) {
         self.tables->database().table_defs().append(object_of<TableDefObject>(call[0]).table);
         self.tables->read();
         return Variant();
       }},
      {L"Delete",
       [](Self& self, const Arguments& call) {
         self.tables->database().table_defs().remove(call.text(0));
         self.tables->read();
         return Variant();
       }},
      {L"Refresh",
       [](Self& self, const Arguments&) {
         self.tables->read();
         return refreshed();
       }},
  };
  return rows;
}

}  // namespace test_server

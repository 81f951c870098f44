#include "database/jet_import/import.h"

#include <fmt/core.h>

#include <algorithm>
#include <filesystem>
#include <random>
#include <string>
#include <utility>

#include "database/engine/embedded/embedded_engine.h"
#include "database/engine/embedded/jet_sql/field_type.h"
#include "database/engine/embedded/jet_sql/validation_rule.h"
#include "database/new_file.h"

namespace jet_import {
namespace {

/// A recordset remembers the rows that it has added, so each one adds only this many.
constexpr int rows_per_recordset = 2000;

database::Environment for_our_engine(const database::Environment& environment) {
  database::Environment ours = environment;
  ours.open_engine = [](std::string_view) { return engine::embedded::create_embedded_engine(); };
  return ours;
}

std::string bracketed(const std::string& name) { return "[" + name + "]"; }

support::RuntimeError with_place(const support::RuntimeError& error, const std::string& place) {
  return {error.number(), place + ": " + error.what()};
}

bool covers_known_fields(const SourceIndex& index, const SourceTable& table) {
  return std::ranges::all_of(index.fields, [&](const std::string& name) {
    return std::ranges::find(table.fields, name, &SourceField::name) != table.fields.end();
  });
}

class Import {
 public:
  Import(database::Progress* progress, Source& source, engine::Database& target)
      : progress_(progress), source_(source), target_(target) {}

  Report run(const Choices& choices) {
    for (const SourceTable& table : source_.tables()) {
      check_foreign_fields(table, choices.leave_out_foreign_fields);
      check_indexes(table, choices.leave_out_unreadable_indexes);
    }
    for (const std::string& name : source_.linked_tables()) note(name + ": leads to another file, not copied");
    engine::Transaction transaction(target_);
    for (std::size_t i = 0; i < source_.tables().size(); ++i) copy_table(i);
    transaction.commit();
    if (progress_) progress_->finish();
    return std::move(report_);
  }

 private:
  void note(std::string text) { report_.notes.push_back(std::move(text)); }

  void check_foreign_fields(const SourceTable& table, bool leave_out) {
    for (const std::string& field : table.foreign_fields) {
      const std::string place = table.name + "." + field;
      if (!leave_out)
        throw support::RuntimeError(support::error_number::invalid_data_type,
                                    place + ": a field of bytes or objects cannot be held");
      note(place + ": bytes or objects, left out");
    }
  }

  void check_indexes(const SourceTable& table, bool leave_out) {
    for (const std::string& index : table.unreadable_indexes) {
      const std::string place = table.name + ": index " + index;
      if (!leave_out) throw support::RuntimeError(support::error_number::unknown_format, place + " cannot be read");
      note(place + " cannot be read, left out");
    }
  }

  void copy_table(std::size_t position) {
    const SourceTable& table = source_.tables()[position];
    if (table.fields.empty()) return note(table.name + ": has no fields, left out");
    try {
      create_table(table);
      negative_zeros_ = 0;
      const std::int64_t rows = copy_rows(position);
      if (negative_zeros_ > 0) note(fmt::format("{}: {} times -0, held as 0", table.name, negative_zeros_));
      set_properties(table);
      check_rows(table, rows);
      report_.tables.push_back({table.name, rows});
    } catch (const support::RuntimeError& error) {
      throw with_place(error, table.name);
    }
  }

  /// Creates the table with its indexes: building them later would sort in memory. The fields accept every value.
  void create_table(const SourceTable& table) {
    const auto created = target_.create_table_def(table.name);
    for (const SourceField& field : table.fields) {
      const auto made = created->create_field(field.name, field.type, field.size);
      made->set_allow_zero_length(true);
      created->fields().append(made);
    }
    for (const SourceIndex& index : table.indexes) {
      if (!covers_known_fields(index, table)) {
        note(table.name + ": index " + index.name + " is over a field that is left out");
        continue;
      }
      const auto made = created->create_index(index.name);
      made->set_primary(index.primary);
      made->set_unique(index.unique || index.primary);
      made->set_required(index.required || index.primary);
      made->set_ignore_nulls(index.ignore_nulls);
      made->set_clustered(index.clustered);
      for (const std::string& field : index.fields) made->fields().append(made->create_field(field));
      created->indexes().append(made);
    }
    target_.table_defs().append(created);
  }

  std::int64_t copy_rows(std::size_t position) {
    const SourceTable& table = source_.tables()[position];
    if (progress_) progress_->start(table.name, database::progress_value(table.row_count.value_or(0)));
    const auto rows = source_.rows(position);
    std::unique_ptr<engine::Recordset> target;
    std::int64_t count = 0;
    for (; rows->next(); ++count) {
      database::end_if_interrupted(progress_);
      if (count % rows_per_recordset == 0) {
        target = target_.open_recordset("SELECT * FROM " + bracketed(table.name) + " WHERE False");
      }
      copy_row(table, *rows, *target);
      if (progress_) progress_->set_value(database::progress_value(count + 1));
    }
    return count;
  }

  void copy_row(const SourceTable& table, SourceRows& row, engine::Recordset& target) {
    target.add_new();
    for (std::size_t i = 0; i < table.fields.size(); ++i) {
      try {
        const engine::Value value = row.value(i);
        if (engine::is_negative_zero(value)) ++negative_zeros_;
        target.set_value(table.fields[i].name, value);
      } catch (const support::RuntimeError& error) {
        throw with_place(error, table.fields[i].name);
      }
    }
    target.update();
  }

  /// The properties of fields bind new rows only: existing rows were stored under the rules of their time.
  void set_properties(const SourceTable& table) {
    const auto created = target_.table_defs().item(table.name);
    created->set_validation_rule(table.validation_rule);
    created->set_validation_text(table.validation_text);
    for (const SourceField& row : table.fields) {
      const auto field = created->fields().item(row.name);
      const auto set = [&](std::string_view property, auto&& change) {
        try {
          change();
        } catch (const support::RuntimeError& error) {
          note(table.name + "." + row.name + ": " + std::string(property) + " left out: " + error.what());
        }
      };
      set("attributes", [&] { field->set_attributes(row.attributes); });
      set("position", [&] { field->set_ordinal_position(row.ordinal_position); });
      set("default", [&] { field->set_default_value(row.default_value); });
      set("required", [&] { field->set_required(row.required); });
      set("empty texts", [&] { field->set_allow_zero_length(row.allow_zero_length); });
      set("rule", [&] { field->set_validation_rule(row.validation_rule); });
      set("text of the rule", [&] { field->set_validation_text(row.validation_text); });
    }
    note_rules(table);
  }

  /// Notes the rules that our engine keeps but cannot check.
  void note_rules(const SourceTable& table) {
    engine::embedded::TableDefinition definition{.name = table.name, .fields = {}};
    definition.validation_rule = table.validation_rule;
    for (const SourceField& row : table.fields) {
      engine::embedded::FieldDefinition field = engine::embedded::new_field(row.name, row.type, row.size);
      field.validation_rule = row.validation_rule;
      definition.fields.push_back(std::move(field));
    }
    const auto note_rule = [&](const std::string& name, const std::string& rule, bool known) {
      if (!rule.empty() && !known) note(name + ": its rule is kept, but nothing checks it here: " + rule);
    };
    for (const auto& field : definition.fields) {
      const bool known = engine::embedded::jet_sql::compile_rule(field, definition).has_value();
      note_rule(table.name + "." + field.name, field.validation_rule, known);
    }
    note_rule(table.name, table.validation_rule, engine::embedded::jet_sql::compile_rule(definition).has_value());
  }

  void check_rows(const SourceTable& table, std::int64_t read) {
    const auto counted = target_.open_recordset("SELECT count(*) FROM " + bracketed(table.name));
    const auto written = static_cast<std::int64_t>(engine::to_double(counted->value(0)));
    const std::int64_t announced = table.row_count.value_or(read);
    if (read == announced && written == read) return;
    throw support::RuntimeError(
        support::error_number::unknown_format,
        fmt::format("the file announces {} rows, {} could be read and {} were written", announced, read, written));
  }

  database::Progress* progress_;
  Source& source_;
  engine::Database& target_;
  Report report_;
  std::int64_t negative_zeros_ = 0;  ///< in the table
};

}  // namespace

Report import_database(const database::Environment& environment, Source& source, std::string_view target,
                       const Choices& choices) {
  database::NewFile file(for_our_engine(environment), target, choices.password);
  Report report = Import(environment.progress, source, file.database()).run(choices);
  file.finish();
  return report;
}

namespace {

class TemporaryCopy : public database::ReadableCopy {
 public:
  TemporaryCopy(support::FileSystem& files, std::string path) : files_(files), path_(std::move(path)) {}
  ~TemporaryCopy() override { files_.remove(path_); }
  TemporaryCopy(const TemporaryCopy&) = delete;
  TemporaryCopy& operator=(const TemporaryCopy&) = delete;
  const std::string& path() const override { return path_; }

 private:
  support::FileSystem& files_;
  std::string path_;
};

std::string temporary_path(const support::FileSystem& files) {
  const std::u8string folder = std::filesystem::temp_directory_path().u8string();
  std::string path = files.windows_path(std::string(folder.begin(), folder.end()));
  if (!path.ends_with('\\')) path += '\\';
  return fmt::format("{}lookup{}.mdb", path, std::random_device{}());
}

std::unique_ptr<Source> open(const database::Environment& environment, std::string_view path) {
  try {
    return open_source(environment, path, "");
  } catch (const support::RuntimeError& error) {
    if (error.number() != support::error_number::wrong_password) throw;
    return open_source(environment, path, environment.patient_password());
  }
}

}  // namespace

std::unique_ptr<database::ReadableCopy> readable_copy(const database::Environment& environment, std::string_view path) {
  const auto source = open(environment, path);
  database::Environment quiet = environment;
  quiet.progress = nullptr;
  auto copy = std::make_unique<TemporaryCopy>(environment.file_system(), temporary_path(environment.file_system()));
  const Choices choices{.password = "", .leave_out_foreign_fields = true, .leave_out_unreadable_indexes = true};
  import_database(quiet, *source, copy->path(), choices);
  return copy;
}

}  // namespace jet_import

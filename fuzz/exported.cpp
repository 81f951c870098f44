// A folder that claims to be a csv export. It is refused with an error number, or it becomes a database that holds the
// folder's content and exports to the same content. An input contains the folder's files: a line "@NAME", then the
// content of the file.
#include <algorithm>
#include <cstdlib>
#include <vector>

#include "database/jet_import/engine_source.h"
#include "database/jet_import/import.h"
#include "database/keeping/table_fingerprint.h"
#include "database/transfer/export.h"
#include "database/transfer/exported_source.h"
#include "database/transfer/value_text.h"
#include "fuzz/target.h"
#include "support/encoding.h"
#include "support/error.h"
#include "support/file_system.h"
#include "support/host_path.h"

namespace {

namespace fs = std::filesystem;
using database::keeping::FingerprintWriter;
using database::keeping::TableFingerprint;

void fill_folder(const fs::path& folder, std::string_view input) {
  fs::remove_all(folder);
  fs::create_directory(folder);
  while (input.starts_with('@')) {
    const std::size_t name_end = std::min(input.find('\n'), input.size());
    const std::string name{input.substr(1, name_end - 1)};
    input.remove_prefix(std::min(name_end + 1, input.size()));
    const std::size_t end = input.starts_with('@') ? 0 : std::min(input.find("\n@"), input.size() - 1) + 1;
    const bool is_name = !name.empty() && name.size() < 100 &&
                         name.find_first_of(std::string_view("/\0", 2)) == std::string::npos &&
                         name.find_first_not_of('.') != std::string::npos;
    if (is_name && support::is_utf8(name)) {
      std::ofstream(folder / support::std_path(name), std::ios::binary) << (input.empty() ? "" : input.substr(0, end));
    }
    input.remove_prefix(input.empty() ? 0 : end);
  }
}

/// Checks a value against its cell's text in another way than the code does: it must be the same number or the same
/// text.
void check_value(const engine::Value& value, const jet_import::SourceField& field) {
  if (engine::is_null(value)) return;
  const std::string text = transfer::text_of(value);
  const engine::Value again = transfer::value_of_text(field.type, text);
  fuzz::promise(again.index() == value.index() && transfer::text_of(again) == text, "a value's text reads back");
  if (const auto number = engine::floating_number(value)) {
    fuzz::promise(std::strtod(text.c_str(), nullptr) == *number || field.type == engine::DataType::Single,
                  "a number is the one that its text says");
  }
}

TableFingerprint fingerprint(jet_import::Source& source, std::size_t position) {
  const jet_import::SourceTable& table = source.tables()[position];
  FingerprintWriter writer;
  for (const jet_import::SourceField& field : table.fields) writer.add_field(field.name);
  for (const auto rows = source.rows(position); rows->next(); writer.end_row()) {
    for (std::size_t i = 0; i < table.fields.size(); ++i) {
      const engine::Value value = rows->value(i);
      check_value(value, table.fields[i]);
      writer.add_value(value);
    }
  }
  return {table.name, writer.rows(), writer.checksum()};
}

std::vector<TableFingerprint> fingerprints(jet_import::Source& source) {
  std::vector<TableFingerprint> found;
  for (std::size_t i = 0; i < source.tables().size(); ++i) {
    if (!source.tables()[i].fields.empty()) found.push_back(fingerprint(source, i));
  }
  return found;
}

/// True if a field has a name whose values are exported as Null.
bool has_secret(const jet_import::Source& source) {
  return std::ranges::any_of(source.tables(), [](const jet_import::SourceTable& table) {
    return std::ranges::any_of(table.fields, [](const jet_import::SourceField& field) {
      return support::equal_ignoring_case(field.name, "Password");
    });
  });
}

struct Places {
  fuzz::ScratchFolder folder;
  fs::path in = folder.path() / "in", database = folder.path() / "new.das", out = folder.path() / "out";

  std::string windows() const { return support::host_file_system().windows_path(database.string()); }
  void empty() const {
    fs::remove(database);
    fs::remove_all(out);
  }
};

void take_and_compare(const Places& places) {
  const database::Environment environment;
  const auto source = transfer::open_exported(places.in.string());
  jet_import::import_database(environment, *source, places.windows(), {});
  const std::vector<TableFingerprint> wanted = fingerprints(*source);
  auto engine = environment.open_engine("DAO.DBEngine.36");
  auto opened = engine->open_database(places.windows(), false, true, {});
  fuzz::promise(database::keeping::differing_tables(wanted, database::keeping::fingerprints(*opened)).empty(),
                "the database holds what the folder holds");
  if (has_secret(*source)) return;
  const auto stored = jet_import::engine_source(std::move(engine), std::move(opened));
  transfer::export_tables(*stored, places.out.string(), {}, nullptr);
  const auto exported = transfer::open_exported(places.out.string());
  fuzz::promise(fingerprints(*exported) == wanted, "the database is exported as the same");
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const Places places;
  fill_folder(places.in, fuzz::text_of(data, size));
  places.empty();
  try {
    take_and_compare(places);
  } catch (const support::RuntimeError& error) {
    fuzz::promise(error.number() != 0, "an error has a number");
    fuzz::promise(!fs::exists(places.out), "nothing is half exported");
  }
  return 0;
}

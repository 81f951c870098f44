#include "wizard/new_database_path.h"

#include <fmt/core.h>

#include <algorithm>
#include <string_view>

#include "support/encoding.h"
#include "support/windows_path.h"

namespace wizard {

namespace {

constexpr int last_number = 100;

/// The registry and the diary hold file names in code page 1252.
std::string file_name_part(std::string_view text) {
  std::string name = support::nearest_in_cp1252(text, '_');
  const auto is_forbidden = [](unsigned char c) {
    return c < ' ' || c == 0x7F || std::string_view("\\/:*?\"<>|").find(static_cast<char>(c)) != std::string_view::npos;
  };
  std::ranges::replace_if(name, is_forbidden, '_');
  return name;
}

}  // namespace

std::string database_file_name(const database::PatientRecord& patient) {
  return file_name_part(patient.name) + "_" + file_name_part(patient.firstname) + ".das";
}

std::string wanted_database_path(const Context& context, const database::PatientRecord& patient) {
  return support::join_path(context.config.PatientData, database_file_name(patient));
}

std::string new_database_path(const Context& context, const database::PatientRecord& patient) {
  const support::FileSystem& files = *context.ports.files;
  std::string path = wanted_database_path(context, patient);
  // The numbered names have no stem, no extension and no folder ("_1."). The diary expects them like this.
  for (int number = 1; files.file_size(path); ++number) {
    if (number > last_number) return {};
    path = fmt::format("_{}.", number);
  }
  return path;
}

}  // namespace wizard

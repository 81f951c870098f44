#include "wizard/new_database_path.h"

#include <algorithm>
#include <string_view>

#include "wizard/windows_path.h"

namespace wizard {

namespace {

constexpr int last_number = 100;

std::string without_forbidden_characters(std::string name) {
  const auto is_forbidden = [](unsigned char c) {
    return c < ' ' || c == 0x7F || std::string_view("\\/:*?\"<>|").find(static_cast<char>(c)) != std::string_view::npos;
  };
  std::ranges::replace_if(name, is_forbidden, '_');
  return name;
}

}  // namespace

std::string new_database_path(const Context& context, const database::PatientRecord& patient) {
  const support::FileSystem& files = *context.ports.files;
  const std::string name =
      without_forbidden_characters(patient.name) + "_" + without_forbidden_characters(patient.firstname) + ".das";
  std::string path = join_path(context.config.PatientData, name);
  // The numbered names have no stem, no extension and no folder ("_1."): the diary knows them so.
  for (int number = 1; files.file_size(path); ++number) {
    if (number > last_number) return {};
    path = "_" + std::to_string(number) + ".";
  }
  return path;
}

}  // namespace wizard

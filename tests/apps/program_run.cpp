#include "tests/apps/program_run.h"

#include <fstream>
#include <random>
#include <sstream>

#include "apps/firststeps_batch/firststeps_batch.h"
#include "apps/patientdb/patientdb.h"
#include "tests/apps/interrupting_output.h"
#include "tests/support/file_content.h"

namespace apps_test {
namespace {

namespace fs = std::filesystem;

using Program = int (*)(const std::vector<std::string>&, console::Console&);

auto values_of(const Environment& environment) {
  return [&environment](std::string_view name) -> std::optional<std::string> {
    const auto found = environment.find(std::string(name));
    if (found == environment.end()) return std::nullopt;
    return found->second;
  };
}

Outcome run(Program program, const std::vector<std::string>& arguments, const Environment& environment) {
  std::ostringstream out, err;
  console::Console console{out, err, values_of(environment), SOURCE_DIR};
  const int code = program(arguments, console);
  return {code, out.str(), err.str()};
}

fs::path utf8_path(const std::string& text) { return fs::path(reinterpret_cast<const char8_t*>(text.c_str())); }

std::string utf8_text(const fs::path& path) {
  const std::u8string text = path.u8string();
  return {text.begin(), text.end()};
}

}  // namespace

Outcome run_patientdb(const std::vector<std::string>& arguments, const Environment& environment) {
  return run(patientdb::run, arguments, environment);
}

Outcome run_interrupted(const std::vector<std::string>& arguments, const std::string& moment,
                        const Environment& environment) {
  InterruptingOutput terminal(moment);
  std::ostringstream out;
  std::ostream err(&terminal);
  console::Console console{out, err, values_of(environment), SOURCE_DIR, true, nullptr, {}};
  const int code = patientdb::run(arguments, console);
  return {terminal.pressed() ? code : -1, out.str(), terminal.str()};
}

Outcome run_batch(const std::vector<std::string>& arguments) { return run(firststeps_batch::run, arguments, {}); }

TemporaryFolder::TemporaryFolder(const fs::path& parent) {
  const auto token = static_cast<unsigned long long>(std::random_device{}());
  path_ = parent / ("test_apps." + std::to_string(token));
  fs::create_directories(path_);
}

TemporaryFolder::~TemporaryFolder() {
  std::error_code ignored;
  fs::remove_all(path_, ignored);
}

std::string TemporaryFolder::file(const std::string& name) const { return utf8_text(path_ / utf8_path(name)); }

std::string TemporaryFolder::write(const std::string& name, std::string_view content) const {
  const fs::path path = path_ / utf8_path(name);
  fs::create_directories(path.parent_path());
  std::ofstream(path, std::ios::binary).write(content.data(), static_cast<std::streamsize>(content.size()));
  return utf8_text(path);
}

std::map<std::string, std::string> TemporaryFolder::snapshot() const {
  std::map<std::string, std::string> files;
  for (const auto& entry : fs::recursive_directory_iterator(path_)) {
    const std::string name = utf8_text(entry.path());
    files[name] = entry.is_regular_file() ? content_of(name) : "folder";
  }
  return files;
}

std::string content_of(const std::string& path) { return support::testing::content_of(utf8_path(path)).value_or(""); }

}  // namespace apps_test

#include "apps/console/console.h"

#include <fmt/core.h>

#include <new>

#include "database/version_record.h"
#include "support/error.h"

namespace console {

int run_guarded(Console& console, std::string_view program, const std::function<int()>& body) {
  try {
    return body();
  } catch (const UsageError& error) {
    console.err << error.what() << "\nTry \"" << program << " --help\".\n";
    return exit_usage;
  } catch (const InputError& error) {
    console.err << error.what() << '\n';
    return exit_usage;
  } catch (const support::RuntimeError& error) {
    console.err << "error " << error.number() << ": " << error.what() << '\n';
  } catch (const std::bad_alloc&) {
    console.err << "error 7: out of memory\n";
  } catch (const std::exception& error) {
    console.err << "error 51: " << error.what() << '\n';
  }
  return exit_failed;
}

std::string exit_codes_text(const ExitCode& own) {
  std::string text = "Exit codes: ";
  for (const ExitCode& row : common_exit_codes) {
    text += fmt::format("{} {};\n  ", row.code, row.meaning);
  }
  return text += fmt::format("{} {}.\n", own.code, own.meaning);
}

std::string version_text(std::string_view program) {
  const std::string version = FIRSTSTEPS_VERSION;
  return fmt::format("{} {}, layout {}.{}\n", program, version, database::current_major_version,
                     database::current_minor_version);
}

}  // namespace console

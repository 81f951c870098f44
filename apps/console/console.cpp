#include "apps/console/console.h"

#include <new>

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

}  // namespace console

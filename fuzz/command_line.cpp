// Any words as a program's arguments, a list of pages, and a path. The list can be walked to its end and back, and the
// path stays one that the host can use.
#include <vector>

#include "apps/console/arguments.h"
#include "fuzz/target.h"
#include "support/file_system.h"
#include "support/text.h"
#include "wizard/step_list.h"

namespace {

constexpr console::Option options[] = {{"--journal", "FILE", ""}, {"--json", "", ""}, console::help_option};

void walk(std::string_view configured) {
  wizard::StepList steps;
  steps.choose(configured);
  const std::size_t most = steps.names().size() + 1;
  std::size_t moves = 0;
  while (steps.current() <= steps.last() && moves <= most) {
    if (moves % 2 == 0) steps.mark_built(steps.current());
    steps.offer("Insulin", moves % 3 == 0);
    steps.forward();
    ++moves;
  }
  fuzz::promise(moves <= most, "a list of pages has an end");
  for (std::size_t i = 0; i <= most; ++i) steps.back();
  fuzz::promise(steps.current() >= 0, "going back ends at the first page");
}

void parse(std::string_view text) {
  std::vector<std::string> words;
  support::Split(std::string(text), words, " ");
  try {
    static_cast<void>(console::Arguments(options, words).operands().size());
  } catch (const console::UsageError&) {
  }
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text = fuzz::text_of(data, size);
  parse(text);
  walk(text);
  const std::string path = support::host_file_system().host_path("Z:\\nowhere\\" + std::string(text));
  fuzz::promise(path.find('\0') == std::string::npos, "a path of the host holds no NUL");
  static_cast<void>(support::matches_pattern(text.substr(0, text.find('\n')), text.substr(0, 64)));
  return 0;
}

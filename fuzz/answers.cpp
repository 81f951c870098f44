// Any bytes as an answers file: answers, or an error that names the line.
#include "apps/firststeps_batch/answers.h"

#include "apps/console/console.h"
#include "fuzz/target.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes = fuzz::text_of(data, size);
  try {
    for (const auto& page : firststeps_batch::parse_answers(bytes, "answers.ini").pages) {
      fuzz::promise(page.line > 0, "a page has its line");
      for (const auto& answer : page.answers) {
        fuzz::promise(answer.line > page.line && !answer.control.empty(), "an answer has its line and control");
      }
    }
  } catch (const console::InputError& error) {
    fuzz::promise(std::string_view(error.what()).starts_with("answers.ini"), "an error names its file");
  }
  return 0;
}

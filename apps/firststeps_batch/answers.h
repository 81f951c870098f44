// The answers file: what a user would enter, page by page, in ini form. It is read strictly, because an answer that is
// overlooked would be missing in a patient's record. Every line is a section, a key with a value, a comment or blank.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace firststeps_batch {

struct Answer {
  std::string control;
  int index = -1;  ///< of "name(index)"; -1 if there is none
  std::string value;
  int line = 0;  ///< counted from 1
  std::string key() const { return index < 0 ? control : control + "(" + std::to_string(index) + ")"; }
};

struct PageAnswers {
  std::string page;
  std::vector<Answer> answers;  ///< in the order of the file
  int line = 0;
};

struct Answers {
  std::string file;
  std::vector<PageAnswers> pages;
};

/// Parses the content of the file `name`: UTF-8, or CP1252 if it is not valid UTF-8. Blanks around names and values and
/// one pair of quotes around a value are removed. A line that begins with ";" is a comment. Raises console::InputError
/// that names file and line.
Answers parse_answers(std::string_view content, std::string_view name);

/// Reads the file and parses it. Also raises InputError if the file cannot be read or is larger than 1 MiB.
Answers read_answers(std::string_view host_path);

}  // namespace firststeps_batch

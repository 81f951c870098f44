#include "apps/firststeps_batch/answers.h"

#include <fmt/core.h>

#include <algorithm>
#include <optional>

#include "apps/console/arguments.h"
#include "apps/console/console.h"
#include "support/encoding.h"
#include "support/text.h"

namespace firststeps_batch {
namespace {

constexpr std::string_view blanks = " \t\r";
constexpr std::uint64_t size_limit = 1 << 20;
constexpr int largest_index = 999;

std::string_view without_quotes(std::string_view text) {
  const bool quoted = text.size() >= 2 && (text.front() == '"' || text.front() == '\'') && text.back() == text.front();
  return quoted ? text.substr(1, text.size() - 2) : text;
}

std::string utf8_content(std::string_view content) {
  content = support::without_byte_order_mark(content);
  return support::is_utf8(content) ? std::string(content) : support::utf8_from_cp1252(content);
}

/// "name" or "name(index)"; nothing for another form.
std::optional<Answer> answer_of_key(std::string_view key) {
  Answer answer;
  const std::size_t bracket = key.find('(');
  answer.control = support::strip(key.substr(0, bracket), blanks);
  if (answer.control.empty()) return std::nullopt;
  if (bracket == std::string_view::npos) return answer;
  if (key.back() != ')') return std::nullopt;
  const std::string_view digits = support::strip(key.substr(bracket + 1, key.size() - bracket - 2), blanks);
  const auto index = support::parse_whole<int>(digits);
  if (!index || *index < 0 || *index > largest_index) return std::nullopt;
  answer.index = *index;
  return answer;
}

class Parser {
 public:
  explicit Parser(std::string_view name) { result_.file = name; }

  Answers parse(std::string_view content) {
    while (!content.empty()) {
      const std::size_t end = content.find('\n');
      ++line_;
      take(support::strip(content.substr(0, end), blanks));
      content.remove_prefix(end == std::string_view::npos ? content.size() : end + 1);
    }
    return std::move(result_);
  }

 private:
  void take(std::string_view line) {
    if (line.empty() || line.front() == ';') return;
    line.front() == '[' ? take_section(line) : take_answer(line);
  }

  void take_section(std::string_view line) {
    if (line.back() != ']') fail("a page name needs its \"]\"");
    const std::string_view page = support::strip(line.substr(1, line.size() - 2), blanks);
    const auto same = [&](const PageAnswers& other) { return support::equal_ignoring_case(other.page, page); };
    if (page.empty()) fail("the page name is empty");
    if (std::ranges::any_of(result_.pages, same)) fail("the page " + std::string(page) + " stands here a second time");
    result_.pages.push_back({std::string(page), {}, line_});
  }

  void take_answer(std::string_view line) {
    const std::size_t equals = line.find('=');
    if (equals == std::string_view::npos) fail("neither a page, nor an answer, nor a comment: " + std::string(line));
    if (result_.pages.empty()) fail("an answer before the first page");
    std::optional<Answer> answer = answer_of_key(support::strip(line.substr(0, equals), blanks));
    if (!answer) fail("no name of a control: " + std::string(line.substr(0, equals)));
    std::vector<Answer>& answers = result_.pages.back().answers;
    const auto same = [&](const Answer& other) { return support::equal_ignoring_case(other.key(), answer->key()); };
    if (std::ranges::any_of(answers, same)) fail(answer->key() + " is answered a second time");
    answer->value = without_quotes(support::strip(line.substr(equals + 1), blanks));
    answer->line = line_;
    answers.push_back(*std::move(answer));
  }

  [[noreturn]] void fail(const std::string& problem) const {
    throw console::InputError(fmt::format("{}, line {}: {}", result_.file, line_, problem));
  }

  Answers result_;
  int line_ = 0;
};

}  // namespace

Answers parse_answers(std::string_view content, std::string_view name) {
  if (content.find('\0') != std::string_view::npos) {
    throw console::InputError(std::string(name) + ": this is no text file.");
  }
  const std::string text = utf8_content(content);
  return Parser(name).parse(text);
}

Answers read_answers(std::string_view host_path) {
  const std::string content = console::read_input_file("The answers file", std::string(host_path), size_limit, "1 MiB");
  return parse_answers(content, host_path);
}

}  // namespace firststeps_batch

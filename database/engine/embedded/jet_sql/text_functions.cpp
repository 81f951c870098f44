#include <algorithm>
#include <memory>

#include "database/engine/date_text.h"
#include "database/engine/embedded/jet_sql/collation.h"
#include "database/engine/embedded/jet_sql/like_pattern.h"
#include "database/engine/embedded/jet_sql/sqlite_functions.h"
#include "database/engine/engine_error.h"
#include "support/encoding.h"

namespace engine::embedded::jet_sql {

namespace {

constexpr std::int32_t longest_fill = 65535;

void text(FunctionCall& call) {
  if (call.is_text(0)) {
    call.result_argument(0);
  } else {
    call.result(call.text(0));
  }
}

/// Null beside a text counts as the empty text.
void concatenate(FunctionCall& call) {
  if (call.is_null(0) && call.is_null(1)) return call.result_null();
  if (call.is_null(0)) return call.result_argument(1);
  if (call.is_null(1)) return call.result_argument(0);
  std::string whole(call.text(0));
  call.result(whole += call.text(1));
}

void like(FunctionCall& call) {
  // SQLite keeps the pattern with the statement as long as it is a constant.
  const auto* known = static_cast<const LikePattern*>(sqlite3_get_auxdata(call.context(), 0));
  std::unique_ptr<LikePattern> compiled;
  if (known == nullptr) {
    compiled = std::make_unique<LikePattern>(call.text(0));
    known = compiled.get();
  }
  call.result(known->matches(call.text(1)) ? 1 : 0);
  if (compiled == nullptr) return;
  sqlite3_set_auxdata(call.context(), 0, compiled.release(),
                      [](void* pattern) { delete static_cast<LikePattern*>(pattern); });
}

std::size_t length_argument(const FunctionCall& call, int position) {
  const std::int32_t length = call.whole(position);
  if (length < 0) raise(error_number::invalid_call);
  return static_cast<std::size_t>(length);
}

void left(FunctionCall& call) { call.result(support::first_characters(call.text(0), length_argument(call, 1))); }

void right(FunctionCall& call) {
  const std::string_view whole = call.text(0);
  const std::size_t count = support::character_count(whole);
  const std::size_t wanted = std::min(length_argument(call, 1), count);
  call.result(whole.substr(support::first_characters(whole, count - wanted).size()));
}

void mid(FunctionCall& call) {
  const std::string_view whole = call.text(0);
  const std::size_t start = length_argument(call, 1);
  if (start == 0) raise(error_number::invalid_call);
  const std::string_view rest = whole.substr(support::first_characters(whole, start - 1).size());
  call.result(call.has(2) ? support::first_characters(rest, length_argument(call, 2)) : rest);
}

void trim_left(FunctionCall& call) {
  const std::string_view whole = call.text(0);
  call.result(whole.substr(std::min(whole.find_first_not_of(' '), whole.size())));
}

std::string_view without_trailing(std::string_view whole) { return whole.substr(0, whole.find_last_not_of(' ') + 1); }

void trim_right(FunctionCall& call) { call.result(without_trailing(call.text(0))); }

void trim(FunctionCall& call) {
  const std::string_view whole = without_trailing(call.text(0));
  call.result(whole.substr(std::min(whole.find_first_not_of(' '), whole.size())));
}

void upper(FunctionCall& call) { call.result(std::string_view(support::to_upper(call.text(0)))); }
void lower(FunctionCall& call) { call.result(std::string_view(support::to_lower(call.text(0)))); }

void length(FunctionCall& call) { call.result(static_cast<std::int64_t>(support::character_count(call.text(0)))); }

/// InStr([start,] text, wanted [, comparison]): the position of the first character of `wanted`, 0 where it does not
/// occur. With comparison 0, case counts.
void position_of(FunctionCall& call) {
  const bool has_start = call.count() > 2;
  const std::size_t start = has_start ? length_argument(call, 0) : 1;
  if (start == 0) raise(error_number::invalid_call);
  const std::string whole(call.text(has_start ? 1 : 0));
  const std::string wanted(call.text(has_start ? 2 : 1));
  const bool exact = call.has(3) && call.whole(3) == 0;
  if (start > support::character_count(whole)) return call.result(0);
  const std::size_t first = support::first_characters(whole, start - 1).size();
  const std::size_t found = exact ? whole.find(wanted, first) : support::find_ignoring_case(whole, wanted, first);
  if (found == std::string::npos) return call.result(0);
  call.result(static_cast<std::int64_t>(support::character_count(std::string_view(whole).substr(0, found)) + 1));
}

/// An argument that says how to compare: with 0 case counts, with 1 or 2 it does not.
bool compares_exactly(const FunctionCall& call, int position) {
  const std::int32_t comparison = call.has(position) ? call.whole(position) : 0;
  if (comparison < 0 || comparison > 2) raise(error_number::invalid_call);
  return comparison == 0;
}

/// InStrRev(text, wanted [, last place, comparison]): the position of the last occurrence that ends at the last place
/// or before.
void last_position_of(FunctionCall& call) {
  const std::int32_t last = call.has(2) ? call.whole(2) : -1;
  if (last == 0 || last < -1) raise(error_number::invalid_call);
  const bool exact = compares_exactly(call, 3);
  const auto folded = [&](std::string_view text) { return exact ? std::string(text) : support::to_lower(text); };
  const std::string whole = folded(call.text(0));
  const std::string wanted = folded(call.text(1));
  const std::size_t count = support::character_count(whole);
  const std::size_t end = last == -1 ? count : static_cast<std::size_t>(last);
  if (whole.empty() || end > count) return call.result(0);
  if (wanted.empty()) return call.result(static_cast<std::int64_t>(end));
  const std::string_view searched = support::first_characters(whole, end);
  const std::size_t found = searched.rfind(wanted);
  if (found == std::string_view::npos) return call.result(0);
  call.result(static_cast<std::int64_t>(support::character_count(searched.substr(0, found)) + 1));
}

/// Replace(text, wanted, replacement [, start [, count [, comparison]]]): the text from the start position on.
void replace(FunctionCall& call) {
  const std::int32_t start = call.has(3) ? call.whole(3) : 1;
  const std::int32_t most = call.has(4) ? call.whole(4) : -1;
  const bool exact = compares_exactly(call, 5);
  if (start < 1 || most < -1) raise(error_number::invalid_call);
  const std::string_view given = call.text(0);
  const std::string whole(given.substr(support::first_characters(given, static_cast<std::size_t>(start - 1)).size()));
  const auto folded = [&](std::string_view text) { return exact ? std::string(text) : support::to_lower(text); };
  const std::string searched = folded(whole);
  const std::string wanted = folded(call.text(1));
  const std::string replacement(call.text(2));
  const auto limit =
      static_cast<std::size_t>(sqlite3_limit(sqlite3_context_db_handle(call.context()), SQLITE_LIMIT_LENGTH, -1));
  std::string changed;
  std::size_t from = 0;
  for (std::int32_t done = 0; !wanted.empty() && done != most; ++done) {
    const std::size_t at = searched.find(wanted, from);
    if (at == std::string::npos) break;
    changed.append(whole, from, at - from) += replacement;
    if (changed.size() > limit) return sqlite3_result_error_toobig(call.context());
    from = at + wanted.size();
  }
  call.result(std::string_view(changed.append(whole, from)));
}

void reverse(FunctionCall& call) {
  const std::string_view whole = call.text(0);
  std::string reversed(whole.size(), ' ');
  for (std::string_view rest = whole; !rest.empty();) {
    const std::string_view first = support::first_characters(rest, 1);
    rest.remove_prefix(first.size());
    first.copy(reversed.data() + rest.size(), first.size());
  }
  call.result(std::string_view(reversed));
}

/// Each word with a capital first letter, all other letters small.
std::string in_proper_case(std::string_view text) {
  constexpr std::string_view between_words{"\0\t\n\v\f\r ", 7};
  std::string proper;
  bool begins_word = true;
  for (std::string_view rest = text; !rest.empty();) {
    const std::string_view first = support::first_characters(rest, 1);
    proper += begins_word ? support::to_upper(first) : support::to_lower(first);
    begins_word = between_words.find(first) != std::string_view::npos;
    rest.remove_prefix(first.size());
  }
  return proper;
}

/// StrConv(text, 1 upper case, 2 lower case, 3 proper case).
void convert_case(FunctionCall& call) {
  switch (call.whole(1)) {
    case 1:
      return upper(call);
    case 2:
      return lower(call);
    case 3:
      return call.result(std::string_view(in_proper_case(call.text(0))));
    default:
      raise(error_number::invalid_call);
  }
}

/// Precondition: a code of CP1252 other than 0.
std::string character_of_code(std::int32_t code) {
  return support::utf8_from_cp1252(std::string(1, static_cast<char>(code)));
}

std::size_t fill_length(FunctionCall& call) {
  const std::size_t length = length_argument(call, 0);
  if (length > longest_fill) raise(error_number::overflow);
  return length;
}

void space(FunctionCall& call) { call.result(std::string_view(std::string(fill_length(call), ' '))); }

void repeat(FunctionCall& call) {
  constexpr int codes = 256;
  // A number is a character's code. A larger number counts modulo 256.
  const std::int32_t code = call.is_text(1) ? 0 : call.whole(1);
  if (code < 0 || (!call.is_text(1) && code % codes == 0)) raise(error_number::invalid_call);
  const std::string first(call.is_text(1) ? support::first_characters(call.text(1), 1)
                                          : character_of_code(code % codes));
  if (first.empty()) raise(error_number::invalid_call);
  std::string whole;
  for (std::size_t i = fill_length(call); i > 0; --i) whole += first;
  call.result(std::string_view(whole));
}

void compare_as_asked(FunctionCall& call) {
  const std::string first(call.text(0));
  const std::string second(call.text(1));
  const bool exact = call.has(2) && call.whole(2) == 0;
  const int difference = exact ? first.compare(second) : compare_texts(first, second);
  call.result(difference < 0 ? -1 : difference > 0 ? 1 : 0);
}

void code_of(FunctionCall& call) {
  const std::string code = support::cp1252_from_utf8(support::first_characters(call.text(0), 1));
  if (code.empty()) raise(error_number::invalid_call);
  call.result(static_cast<std::int32_t>(static_cast<unsigned char>(code.front())));
}

void character_of(FunctionCall& call) {
  const std::int32_t code = call.whole(0);
  if (code < 1 || code > 255) raise(error_number::invalid_call);
  call.result(std::string_view(character_of_code(code)));
}

/// The signed 16-bit code. For a character that takes two codes, the first one.
void wide_code_of(FunctionCall& call) {
  const std::u16string units = support::utf16_from_utf8(support::first_characters(call.text(0), 1));
  if (units.empty()) raise(error_number::invalid_call);
  call.result(std::int32_t{static_cast<std::int16_t>(units.front())});
}

void wide_character_of(FunctionCall& call) {
  const std::int32_t code = call.whole(0);
  const auto unit = static_cast<char16_t>(code);
  const bool half_a_character = unit >= 0xD800 && unit < 0xE000;
  if (code < -32768 || code > 65535 || unit == 0 || half_a_character) raise(error_number::invalid_call);
  call.result(std::string_view(support::utf8_from_utf16(std::u16string(1, unit))));
}

void date_as_text(FunctionCall& call) { call.result(std::string_view(date_text(call.date(0)))); }

constexpr ScalarRow text_rows[] = {
    row<text>("jet_text", 1),
    row<text>("jet_cstr", 1),
    row<date_as_text>("jet_date_text", 1),
    row<concatenate>("jet_concat", 2, NullRule::IsTaken),
    row<like>("jet_like", 2),
    row<left>("jet_left", 2),
    row<right>("jet_right", 2),
    row<mid>("jet_mid", 2),
    row<mid>("jet_mid", 3),
    row<trim_left>("jet_ltrim", 1),
    row<trim_right>("jet_rtrim", 1),
    row<trim>("jet_trim", 1),
    row<upper>("jet_ucase", 1),
    row<lower>("jet_lcase", 1),
    row<length>("jet_len", 1),
    row<position_of>("jet_instr", 2),
    row<position_of>("jet_instr", 3),
    row<position_of>("jet_instr", 4),
    row<last_position_of>("jet_instrrev", 2),
    row<last_position_of>("jet_instrrev", 3),
    row<last_position_of>("jet_instrrev", 4),
    row<replace>("jet_replace", 3),
    row<replace>("jet_replace", 4),
    row<replace>("jet_replace", 5),
    row<replace>("jet_replace", 6),
    row<reverse>("jet_strreverse", 1),
    row<convert_case>("jet_strconv", 2),
    row<space>("jet_space", 1),
    row<repeat>("jet_string", 2),
    row<compare_as_asked>("jet_strcomp", 2),
    row<compare_as_asked>("jet_strcomp", 3),
    row<code_of>("jet_asc", 1),
    row<character_of>("jet_chr", 1),
    row<wide_code_of>("jet_ascw", 1),
    row<wide_character_of>("jet_chrw", 1),
};

}  // namespace

const std::span<const ScalarRow> text_functions = text_rows;

}  // namespace engine::embedded::jet_sql

#include "tests/engine/model/predicates.h"

#include <iterator>

namespace engine::test::model {
namespace {

const char* const comparisons[] = {" = ", " <> ", " < ", " > ", " <= ", " >= "};
const char* const connectives[] = {" AND ", " OR ", " XOR ", " EQV ", " IMP "};
const char* const literals[] = {"0", "1", "-1", "0.1", "2.5", "0.7", "3", "100", "Null"};
const char* const texts[] = {"'a'", "'B'", "'ä'", "''", "'ab '", "Null"};
const char* const patterns[] = {"'a*'", "'?'", "'[a-c]*'", "'*b'", "'[!a]*'", "'*'"};

}  // namespace

std::string Predicates::number(int levels) {
  const char* const own[] = {"p.i", "p.l", "p.s", "p.d", "p.late", "p.id", "p.b"};
  const char* const others[] = {"q.k", "q.s", "q.n"};
  if (levels <= 0 || below(3) == 0) {
    if (below(3) == 0) return one_of(literals);
    return joined_ && below(3) == 0 ? one_of(others) : one_of(own);
  }
  const std::string first = number(levels - 1);
  switch (below(14)) {
    case 0:
      return "(" + first + " + " + number(levels - 1) + ")";
    case 1:
      return "(" + first + " * " + number(levels - 1) + ")";
    case 2:
      return "Round(" + first + ", 1)";
    case 3:
      return "Abs(" + first + ")";
    case 4:
      return "Int(" + first + ")";
    case 5:
      return "IIf(" + condition(levels - 1) + ", " + first + ", " + number(levels - 1) + ")";
    case 6:
      return "Nz(" + first + ", 1)";
    case 7:
      return "Len(" + text(levels - 1) + ")";
    case 8:
      return "Year(p.t)";
    case 9:
      return "CSng(" + first + ")";
    case 10:
      return "Sgn(" + first + ")";
    case 11:
      return "DateDiff('d', p.t, #1/1/2024#)";
    case 12:
      return "(SELECT max(r.k) FROM q AS r)";
    default:
      return "(-" + first + ")";
  }
}

std::string Predicates::text(int levels) {
  if (levels <= 0 || below(2) == 0) {
    if (below(3) == 0) return one_of(texts);
    return joined_ && below(3) == 0 ? "q.x" : "p.x";
  }
  const std::string first = text(levels - 1);
  switch (below(6)) {
    case 0:
      return "Left(" + first + ", 1)";
    case 1:
      return "UCase(" + first + ")";
    case 2:
      return "(" + first + " & " + text(levels - 1) + ")";
    case 3:
      return "Nz(" + first + ")";
    case 4:
      return "Trim(" + first + ")";
    default:
      return "IIf(" + condition(levels - 1) + ", " + first + ", " + text(levels - 1) + ")";
  }
}

std::string Predicates::subselect(int levels) {
  switch (below(3)) {
    case 0:
      return number(levels) + (below(2) == 0 ? " IN" : " NOT IN") + " (SELECT r.s FROM q AS r)";
    case 1:
      return "EXISTS (SELECT * FROM q AS r WHERE r.k = " + number(0) + ")";
    default:
      return number(levels) + one_of(comparisons) + "(SELECT min(r.s) FROM q AS r WHERE r.k > p.i)";
  }
}

std::string Predicates::comparison(int levels) {
  const std::string negated = below(2) == 0 ? " NOT" : "";
  switch (below(10)) {
    case 0:
    case 1:
      return number(levels) + one_of(comparisons) + number(levels);
    case 2:
      return text(levels) + one_of(comparisons) + text(levels);
    case 3:
      return number(levels) + negated + " BETWEEN " + number(levels) + " AND " + number(levels);
    case 4:
      return number(levels) + negated + " IN (" + number(levels) + ", " + number(0) + ", " + one_of(literals) + ")";
    case 5:
      return text(levels) + negated + " LIKE " + one_of(patterns);
    case 6:
      return (below(2) == 0 ? number(levels) : text(levels)) + " IS" + negated + " NULL";
    case 7:
      return "IsNull(" + number(levels) + ")";
    case 8:
      return "p.t" + one_of(comparisons) + "#3/1/2024#";
    default:
      return subselect(levels);
  }
}

std::string Predicates::condition(int levels) {
  if (levels <= 0 || below(3) == 0) return "(" + comparison(levels) + ")";
  if (below(5) == 0) return "(NOT " + condition(levels - 1) + ")";
  return "(" + condition(levels - 1) + one_of(connectives) + condition(levels - 1) + ")";
}

}  // namespace engine::test::model

#include "tests/support/ini_table.h"

namespace support::testing {

using namespace std::string_view_literals;

namespace {

constexpr std::string_view sample_file =
    "first=0\n[a]\nk=v\nk=w\n  key2 =  x y  \nq=\"quo ted\"\ns='single'\nopen=\"open\nnone=\"\"\none=\"\n"
    "mixed='x\"\ninner=\" x \"\nsemi=a;b ; c\n;c=1\n #h=2\nnoeq\nempty=\n[a]\nk3=second\n[ B ]\nk=sp\n[c] tail\n"
    "k=t\n  [d]\nk=d\n[e\nk=e\n[f]]\nk=f\n[g]\nn\nn=2\n=noname\neq==x=y";
constexpr std::string_view list_cases = "[a]\nk=0123456789\nq=\"0123456789\"\nkey2=\n[bcd]\n[efgh]\n";

}  // namespace

const std::vector<IniReadRow>& ini_read_rows() {
  static const std::vector<IniReadRow> rows = {
      {"the first of two keys", sample_file, Ask::Value, "a", "k", "D", 100, "v"},
      {"names without regard to case", sample_file, Ask::Value, "A", "K", "D", 100, "v"},
      {"blanks around names asked for", sample_file, Ask::Value, " a ", " k\t", "D", 100, "v"},
      {"blanks around key and value", sample_file, Ask::Value, "a", "key2", "D", 100, "x y"},
      {"one pair of quotes", sample_file, Ask::Value, "a", "q", "D", 100, "quo ted"},
      {"single quotes", sample_file, Ask::Value, "a", "s", "D", 100, "single"},
      {"an open quote stays", sample_file, Ask::Value, "a", "open", "D", 100, "\"open"},
      {"nothing in quotes", sample_file, Ask::Value, "a", "none", "D", 100, ""},
      {"one quote alone stays", sample_file, Ask::Value, "a", "one", "D", 100, "\""},
      {"quotes that do not match stay", sample_file, Ask::Value, "a", "mixed", "D", 100, "'x\""},
      {"blanks in quotes stay", sample_file, Ask::Value, "a", "inner", "D", 100, " x "},
      {"no comment within a line", sample_file, Ask::Value, "a", "semi", "D", 100, "a;b ; c"},
      {"only a semicolon begins a comment", sample_file, Ask::Value, "a", "#h", "D", 100, "2"},
      {"a key without equals sign is none", sample_file, Ask::Value, "a", "noeq", "D", 100, "D"},
      {"and hides a later one", sample_file, Ask::Value, "g", "n", "D", 100, "D"},
      {"an empty value is a value", sample_file, Ask::Value, "a", "empty", "D", 100, ""},
      {"a key without name", sample_file, Ask::Value, "g", "", "D", 100, "noname"},
      {"an equals sign in the value", sample_file, Ask::Value, "g", "eq", "D", 100, "=x=y"},
      {"only the first of two sections", sample_file, Ask::Value, "a", "k3", "D", 100, "D"},
      {"blanks in the heading", sample_file, Ask::Value, "B", "k", "D", 100, "sp"},
      {"text behind the heading", sample_file, Ask::Value, "c", "k", "D", 100, "t"},
      {"an indented heading", sample_file, Ask::Value, "d", "k", "D", 100, "d"},
      {"a heading without end is none", sample_file, Ask::Value, "e", "k", "D", 100, "D"},
      {"the last bracket ends the heading", sample_file, Ask::Value, "f]", "k", "D", 100, "f"},
      {"keys before the first heading", sample_file, Ask::Value, "", "first", "D", 100, "0"},
      {"a missing section", sample_file, Ask::Value, "zz", "k", "D", 100, "D"},
      {"blanks behind the fallback go", sample_file, Ask::Value, "a", "zz", "  D e  ", 100, "  D e"},
      {"the fallback is cut too", sample_file, Ask::Value, "a", "zz", "DEFAULT", 4, "DEF"},
      {"line ends of old systems", "[a]\rk=v\rj=w\r", Ask::Value, "a", "j", "D", 100, "w"},
      {"mixed line ends", "[a]\nk=v\rj=w\r\nl=1", Ask::Value, "a", "l", "D", 100, "1"},
      {"tabs and the end-of-file mark are blanks", "[a]\nk=\t\x1Av\v\f\x1A\n", Ask::Value, "a", "k", "D", 100, "v"},
      {"other controls and hard blanks stay", "[a]\nk=\x01\xA0v\x1C\n", Ask::Value, "a", "k", "D", 100,
       "\x01\u00A0v\x1C"},
      {"a NUL ends the value", "[a]\nk=v\0w\nj=2\n"sv, Ask::Value, "a", "k", "D", 100, "v"},
      {"and not the file", "[a]\nk=v\0w\nj=2\n"sv, Ask::Value, "a", "j", "D", 100, "2"},
      {"CP1252", "[u\xE4]\n\xDC=\xE9\x80\n", Ask::Value, "uä", "Ü", "D", 100, "é€"},
      {"umlauts without regard to case", "[u\xE4]\n\xDC=\xE9\x80\n", Ask::Value, "UÄ", "ü", "D", 100, "é€", true},
      {"UTF-8 by its mark", "\xEF\xBB\xBF[\xC3\xA4]\nk=\xE2\x82\xAC\n", Ask::Value, "ä", "k", "D", 100, "€"},
      {"UTF-8 without mark is CP1252", "[a]\nk=\xC3\xA4\n", Ask::Value, "a", "k", "D", 100, "Ã¤"},
      {"UTF-16 by its mark", "\xFF\xFE[\0a\0]\0\n\0k\0=\0\xE4\0"sv, Ask::Value, "a", "k", "D", 100, "ä"},
      {"an empty file", "", Ask::Value, "a", "k", "D", 100, "D"},
      {"the value fills the buffer", list_cases, Ask::Value, "a", "k", "D", 11, "0123456789"},
      {"the value is cut", list_cases, Ask::Value, "a", "k", "D", 10, "012345678"},
      {"a cut value loses its quotes", list_cases, Ask::Value, "a", "q", "D", 5, "0123"},
      {"quotes are not counted", list_cases, Ask::Value, "a", "q", "D", 11, "0123456789", true},
      {"umlauts count once", "[a]\nk=\xE4\xF6\xFC\n", Ask::Value, "a", "k", "D", 3, "äö"},
      {"a buffer of one", list_cases, Ask::Value, "a", "k", "D", 1, ""},
      {"keys", sample_file, Ask::Keys, "g", "", "D", 100, "n\0\0eq\0"sv},
      {"keys without comments and repeated ones with", "[a]\n;c=1\nk=1\nK=2\nno\n", Ask::Keys, "a", "", "D", 100,
       "k\0K\0"sv},
      {"the list fits", list_cases, Ask::Keys, "a", "", "D", 11, "k\0q\0key2\0"sv},
      {"the list loses its last NUL", list_cases, Ask::Keys, "a", "", "D", 10, "k\0q\0key2"sv},
      {"the list is cut", list_cases, Ask::Keys, "a", "", "D", 8, "k\0q\0ke"sv},
      {"keys of a missing section", sample_file, Ask::Keys, "zz", "", "D", 100, "D"},
      {"keys of an empty section", list_cases, Ask::Keys, "bcd", "", "D", 100, "D"},
      {"sections", list_cases, Ask::Sections, "", "", "D", 100, "a\0bcd\0efgh\0"sv},
      {"repeated sections", "[a]\n[b]\n[A]\n", Ask::Sections, "", "", "D", 100, "a\0b\0A\0"sv},
      {"sections fit", list_cases, Ask::Sections, "", "", "D", 13, "a\0bcd\0efgh\0"sv},
      {"sections are cut", list_cases, Ask::Sections, "", "", "D", 9, "a\0bcd\0e"sv},
      {"no sections", "k=1\n", Ask::Sections, "", "", "D", 100, ""},
  };
  return rows;
}

const std::vector<IniWriteRow>& ini_write_rows() {
  constexpr std::string_view messy_file = "; top\n\n[a]\n  k = v  ; c\n\n;comment=1\nnoeq\n\n[b] tail\nq=\"x\"\n\n[c]";
  constexpr std::string_view two_keys = "[a]\r\nk=v\r\n";
  static const std::vector<IniWriteRow> rows = {
      {"comments and order stay", messy_file, "a", "K", "new",
       "; top\r\n[a]\r\nk=new\r\n;comment=1\r\nnoeq\r\n[b]\r\nq=\"x\"\r\n[c]\r\n"},
      {"a new key ends its section", messy_file, "a", "z", "1",
       "; top\r\n[a]\r\nk=v  ; c\r\n;comment=1\r\nnoeq\r\nz=1\r\n[b]\r\nq=\"x\"\r\n[c]\r\n"},
      {"a key without equals sign gets one", "[g]\nn\nn=2\n", "g", "n", "3", "[g]\r\nn=3\r\nn=2\r\n"},
      {"a new section ends the file", two_keys, "New", "n", "1", "[a]\r\nk=v\r\n[New]\r\nn=1\r\n"},
      {"names without the blanks around them", two_keys, " A ", " k ", "1", "[a]\r\nk=1\r\n"},
      {"blanks before the value go", two_keys, "a", "k", " x", "[a]\r\nk=x\r\n"},
      {"an empty value", two_keys, "a", "k", "", "[a]\r\nk=\r\n"},
      {"quotes as they stand", two_keys, "a", "k", "\"q\"", "[a]\r\nk=\"q\"\r\n"},
      {"the first of two sections", "[a]\nk=1\n[b]\n[a]\nj=2\n", "a", "j", "3",
       "[a]\r\nk=1\r\nj=3\r\n[b]\r\n[a]\r\nj=2\r\n"},
      {"before the first heading", "k=0\n[a]\nk=1\n", "", "k", "5", "k=5\r\n[a]\r\nk=1\r\n"},
      {"an empty file", "", "a", "k", "v", two_keys},
      {"umlauts and the euro", two_keys, "a", "k", "Größe €",
       "[a]\r\nk=Gr\xF6\xDF"
       "e \x80\r\n"},
      {"UTF-8 stays UTF-8", "\xEF\xBB\xBF[a]\nk=\xC5\x81\n", "a", "n", "ü",
       "\xEF\xBB\xBF[a]\r\nk=\xC5\x81\r\nn=\xC3\xBC\r\n"},
      {"UTF-16 stays UTF-16", "\xFF\xFE[\0a\0]\0"sv, "a", "n", "ü", "\xFF\xFE[\0a\0]\0\r\0\n\0n\0=\0\xFC\0\r\0\n\0"sv},
      {"the same value again", "[a]\n\nk = v\n", "a", "k", "v", "[a]\n\nk = v\n"},
      {"refused: outside CP1252", two_keys, "a", "k", "Łódź", two_keys, false},
      {"refused: a line break", two_keys, "a", "k", "1\r\n[x]", two_keys, false},
      {"refused: a NUL", two_keys, "a", "k", "1\0"sv, two_keys, false},
      {"refused: no key", two_keys, "a", "", "1", two_keys, false},
      {"refused: a key with an equals sign", two_keys, "a", "x=y", "1", two_keys, false},
      {"refused: a key like a comment", two_keys, "a", ";k", "1", two_keys, false},
      {"refused: a key like a heading", two_keys, "a", "[k", "1", two_keys, false},
      {"refused: a section with a bracket", two_keys, "a]b", "k", "1", two_keys, false},
      {"refused: a file that is not text", "[a]\nk=v\0w\n"sv, "a", "k", "1", "[a]\nk=v\0w\n"sv, false},
  };
  return rows;
}

}  // namespace support::testing

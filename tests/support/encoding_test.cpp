#include "support/encoding.h"

#include <gtest/gtest.h>

namespace support {
namespace {

TEST(Cp1252, ReadsEveryByteAndWritesItBack) {
  std::string bytes;
  for (int code = 0; code < 256; ++code) bytes += static_cast<char>(code);
  const std::string text = utf8_from_cp1252(bytes);
  EXPECT_TRUE(is_utf8(text));
  EXPECT_TRUE(fits_cp1252(text));
  EXPECT_EQ(character_count(text), 256U);
  EXPECT_EQ(cp1252_from_utf8(text), bytes);
  EXPECT_EQ(utf8_from_cp1252("\x80 \xE4\xDF\x9F"), "€ äßŸ");
}

TEST(Cp1252, WritesAQuestionMarkForWhatItHasNot) {
  EXPECT_EQ(cp1252_from_utf8("Łódź 中 \xFF\xC3"),
            "?\xF3"
            "d? ? ??");
  EXPECT_FALSE(fits_cp1252("Łódź"));
  EXPECT_FALSE(fits_cp1252("a\xC3"));
  EXPECT_TRUE(fits_cp1252("Größe €"));
}

TEST(Cp1252, TakesTheNearestLetterThatItHas) {
  for (const auto& [text, nearest] : {
           std::pair{"Şahinoğlu", "Sahinoglu"},
           {"Żó Łódź Ćwikła", "Zó Lódz Cwikla"},
           {"Đỗ Trọng Ấn ƯỚC", "Dô Trong Ân UÓC"},
           {"Müller-Lüdenscheidt €", "Müller-Lüdenscheidt €"},
           {"Őrsi Űző İ ı ẞ ſ", "Orsi Uzo I i ß s"},
           {"S\u0327ahin", "Sahin"},
           {"Иван 中 😀\xC3", "____ _ __"},
           {"Ƣǀ\u0250", "___"},
           {"", ""},
       }) {
    EXPECT_EQ(nearest_in_cp1252(text, '_'), nearest) << text;
  }
  // Every letter of the tables has a nearest letter that can be written.
  for (char32_t code = 0xA0; code < 0x2000; ++code) {
    const std::u16string letter(1, static_cast<char16_t>(code));
    EXPECT_TRUE(fits_cp1252(nearest_in_cp1252(utf8_from_utf16(letter), '_'))) << static_cast<unsigned>(code);
  }
}

struct Utf8Row {
  std::string_view text;
  bool well_formed;
  std::size_t characters;
  std::u16string_view utf16;
};

TEST(Utf8, CountsAndConvertsWellFormedAndMalformedText) {
  const Utf8Row rows[] = {
      {"", true, 0, u""},
      {"aä€", true, 3, u"aä€"},
      {"\xF0\x9F\x98\x80!", true, 2, u"\U0001F600!"},
      {"\xC3", false, 1, u"\uFFFD"},                      // cut short
      {"\xC0\xAF", false, 2, u"\uFFFD\uFFFD"},            // overlong
      {"\xED\xA0\x80", false, 3, u"\uFFFD\uFFFD\uFFFD"},  // a surrogate
      {"\xF4\x90\x80\x80", false, 4, u"\uFFFD\uFFFD\uFFFD\uFFFD"},
      {"x\x80y", false, 3, u"x\uFFFDy"},
  };
  for (const Utf8Row& row : rows) {
    EXPECT_EQ(is_utf8(row.text), row.well_formed) << row.text;
    EXPECT_EQ(character_count(row.text), row.characters) << row.text;
    EXPECT_EQ(utf16_from_utf8(row.text), row.utf16) << row.text;
    if (row.well_formed) {
      EXPECT_EQ(utf8_from_utf16(row.utf16), row.text);
    }
  }
  const char16_t lone_surrogates[] = {0xDC00, u'a', 0xD800, 0};
  EXPECT_EQ(utf8_from_utf16(lone_surrogates), "\uFFFDa\uFFFD");
  EXPECT_EQ(first_characters("äöü", 2), "äö");
  EXPECT_EQ(first_characters("äö", 9), "äö");
}

TEST(Case, FollowsTheLettersOfCp1252) {
  EXPECT_EQ(to_upper("straße äöü ÿ šœž ×÷ µ"), "STRAßE ÄÖÜ Ÿ ŠŒŽ ×÷ µ");
  EXPECT_EQ(to_lower("ÄÖÜ Ÿ ŠŒŽ ×÷ ÐÞ"), "äöü ÿ šœž ×÷ ðþ");
  EXPECT_TRUE(equal_ignoring_case("MAßEINHEIT Ü", "maßeinheit ü"));
  EXPECT_FALSE(equal_ignoring_case("ss", "ß"));
}

TEST(FindIgnoringCase, GivesPlaceAndLengthOfTheFirstMatch) {
  std::size_t length = 0;
  EXPECT_EQ(find_ignoring_case("xxÄÖx", "äö", 0, &length), 2U);
  EXPECT_EQ(length, 4U);
  EXPECT_EQ(find_ignoring_case("abab", "AB", 1), 2U);
  EXPECT_EQ(find_ignoring_case("abab", "c"), std::string_view::npos);
  EXPECT_EQ(find_ignoring_case("ab", "a", 9), std::string_view::npos);
}

}  // namespace
}  // namespace support

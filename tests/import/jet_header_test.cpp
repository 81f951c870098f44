#include "database/jet_import/jet_header.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>

#include "support/error.h"

namespace {

using jet_import::JetVersion;
using namespace std::string_view_literals;

// The key stream at 0x3C and at 0x42, as public notes on the format give it.
constexpr std::string_view mask_of_code_page = "\x7B\x42"sv;
constexpr std::string_view mask_of_password =
    "\x86\xFB\xEC\x37\x5D\x44\x9C\xFA\xC6\x5E\x28\xE6\x13\xB6\x8A\x60\x54\x94\x7B\x36"sv;

void put(std::string& page, std::size_t offset, std::string_view bytes, std::string_view mask) {
  for (std::size_t i = 0; i < mask.size(); ++i) {
    page[offset + i] = static_cast<char>((i < bytes.size() ? bytes[i] : '\0') ^ mask[i]);
  }
}

std::string jet3_page(std::string_view password) {
  std::string page(2048, '\0');
  page.replace(0, 20, "\0\1\0\0Standard Jet DB\0"sv);
  put(page, 0x3C, "\xE4\x04"sv, mask_of_code_page);
  put(page, 0x42, password, mask_of_password);
  return page;
}

TEST(JetHeader, TellsThePasswordOfAJet3File) {
  constexpr std::pair<std::string_view, std::string_view> passwords[] = {
      {"", ""},
      {"brimol", "brimol"},
      {"J\xF6rg", "Jörg"},
      {"12345678901234567890", "12345678901234567890"},
      {"ab\0rest"sv, "ab"},
  };
  for (const auto& [stored, password] : passwords) {
    const auto header = jet_import::read_jet_header(jet3_page(stored));
    EXPECT_EQ(header.password, password);
    EXPECT_EQ(header.version, JetVersion::Jet3);
    EXPECT_EQ(header.code_page, 1252);
  }
}

TEST(JetHeader, RefusesWhatNoReaderHereKnows) {
  std::string newer = jet3_page("");
  newer[0x14] = 2;
  std::string accdb = jet3_page("");
  accdb.replace(4, 15, "Standard ACE DB");
  for (const std::string& page :
       {std::string(), std::string(2048, '\0'), jet3_page("").substr(0, 0x97), newer, accdb}) {
    try {
      jet_import::read_jet_header(page);
      ADD_FAILURE() << page.substr(0, 24);
    } catch (const support::RuntimeError& error) {
      EXPECT_EQ(error.number(), 3343);
    }
  }
}

TEST(JetHeader, ReadsTextsAsEachVersionStoresThem) {
  struct Case {
    JetVersion version;
    std::string_view bytes, text;
  };
  constexpr Case cases[] = {
      {JetVersion::Jet3, "M\xFCller \x80", "Müller €"},
      {JetVersion::Jet3, "\xFF\xFE", "ÿþ"},
      {JetVersion::Jet4, "M\0\xFC\0"sv, "Mü"},
      {JetVersion::Jet4, "\xFF\xFEM\xFCller", "Müller"},
      {JetVersion::Jet4,
       "\xFF\xFE"
       "a\0\xAC\x20\0b"sv,
       "a€b"},
      {JetVersion::Jet4, "\x3D\xD8\x00\xDE"sv, "\U0001F600"},
      {JetVersion::Jet4, "\xFF\xFE", ""},
      {JetVersion::Jet4, "", ""},
  };
  for (const Case& row : cases) EXPECT_EQ(jet_import::jet_text(row.version, row.bytes), row.text);
}

}  // namespace

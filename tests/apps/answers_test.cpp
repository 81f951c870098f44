#include "apps/firststeps_batch/answers.h"

#include <gmock/gmock.h>

#include "apps/console/console.h"

namespace {

using testing::HasSubstr;

std::string text_of(const firststeps_batch::Answers& answers) {
  std::string text;
  for (const auto& page : answers.pages) {
    text += "[" + page.page + "]";
    for (const auto& answer : page.answers) {
      text += answer.key() + "=" + answer.value + "@" + std::to_string(answer.line) + "|";
    }
  }
  return text;
}

TEST(Answers, AreReadInTheOrderOfTheFile) {
  const std::pair<std::string_view, std::string_view> cases[] = {
      {"", ""},
      {"; note\r\n[PatDat]\r\ntxtName = Müller \r\n txtCity=\r\n\r\n[ Insulin ]\r\ncbInsulin( 0 )=a=b;c",
       "[PatDat]txtName=Müller@3|txtCity=@4|[Insulin]cbInsulin(0)=a=b;c@7|"},
      {"\xEF\xBB\xBF[Ma\xC3\x9F"
       "einheit]\noptBGUnit=1",
       "[Maßeinheit]optBGUnit=1@2|"},
      {"[Ma\xDF"
       "einheit]\noptBGUnit=1",
       "[Maßeinheit]optBGUnit=1@2|"},
      {"[p]\na=\" x \"\nb='y'\nc=\"\nd=\"z'", "[p]a= x @2|b=y@3|c=\"@4|d=\"z'@5|"},
  };
  for (const auto& [content, expected] : cases) {
    EXPECT_EQ(text_of(firststeps_batch::parse_answers(content, "answers.ini")), expected) << content;
  }
}

TEST(Answers, AreRefusedWithFileAndLine) {
  const std::pair<std::string_view, std::string_view> cases[] = {
      {"txtName=a", "answers.ini, line 1: an answer before the first page"},
      {"[PatDat\ntxtName=a", "answers.ini, line 1: a page name needs"},
      {"[ ]", "the page name is empty"},
      {"[PatDat]\n\n[patdat]", "answers.ini, line 3: the page patdat stands here a second time"},
      {"[PatDat]\ntxtName", "neither a page, nor an answer"},
      {"[PatDat]\n=a", "no name of a control"},
      {"[PatDat]\ncbInsulin(x)=a", "no name of a control"},
      {"[PatDat]\ncbInsulin(-1)=a", "no name of a control"},
      {"[PatDat]\ncbInsulin(1=a", "no name of a control"},
      {"[PatDat]\ncbInsulin(1)=a\nCBINSULIN(01)=b", "CBINSULIN(1) is answered a second time"},
      {std::string_view("[PatDat]\0", 9), "answers.ini: this is no text file"},
  };
  for (const auto& [content, message] : cases) {
    try {
      firststeps_batch::parse_answers(content, "answers.ini");
      ADD_FAILURE() << "accepted: " << content;
    } catch (const console::InputError& error) {
      EXPECT_THAT(error.what(), HasSubstr(std::string(message)));
    }
  }
}

}  // namespace

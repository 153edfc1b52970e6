#include "base/translation.h"

#include <gtest/gtest.h>

#include <map>

#include "tests/support/plain_blanks.h"

namespace kiva {
namespace {

std::map<std::string, std::string> environment;

const char* variable(const char* name) {
  const auto at = environment.find(name);
  return at == environment.end() ? nullptr : at->second.c_str();
}

std::string language(std::map<std::string, std::string> set) {
  environment = std::move(set);
  return language_of(variable);
}

TEST(Translation, TheEnvironmentNamesALanguage) {
  EXPECT_EQ(language({}), "");
  EXPECT_EQ(language({{"LANG", "fr_FR.UTF-8"}}), "fr");
  EXPECT_EQ(language({{"LANG", "fr"}}), "fr");
  EXPECT_EQ(language({{"LANG", "fr_CA.utf8@euro"}}), "fr");
  EXPECT_EQ(language({{"LANG", "fr_FR.ISO-8859-1"}}), "");
  EXPECT_EQ(language({{"LANG", "fr_FR.UTF-8"}, {"LC_MESSAGES", "en_GB.UTF-8"}}), "");
  EXPECT_EQ(language({{"LANG", "en_GB.UTF-8"}, {"LC_MESSAGES", "fr_FR.UTF-8"}}), "fr");
  EXPECT_EQ(language({{"LC_MESSAGES", "fr_FR.UTF-8"}, {"LC_ALL", "C.UTF-8"}}), "");
  EXPECT_EQ(language({{"LC_ALL", ""}, {"LANG", "fr_FR.UTF-8"}}), "fr");
  EXPECT_EQ(language({{"LANG", "de_DE.UTF-8"}, {"LANGUAGE", "de:fr:en"}}), "fr");
  EXPECT_EQ(language({{"LANG", "fr_FR.UTF-8"}, {"LANGUAGE", "xx::en_GB:fr"}}), "");
  EXPECT_EQ(language({{"LANG", "C"}, {"LANGUAGE", "fr"}}), "");
}

TEST(Translation, ThereIsNoneOfALanguageWithoutTexts) {
  EXPECT_EQ(PhraseBook::of("xx"), nullptr);
  EXPECT_EQ(PhraseBook::of(""), nullptr);
}

TEST(Translation, NamesAndPartsComeIntoTheirPlaces) {
  const auto french = PhraseBook::of("fr");
  ASSERT_NE(french, nullptr);
  const std::pair<const char*, const char*> sentences[]{
      {"\"alram\" is not declared; did you mean \"alarm\"?",
       "« alram » n’est pas déclaré ; vouliez-vous dire « alarm » ?"},
      {"module \"m\": type \"t\" is not declared [-Wx]",
       "module « m » : le type « t » n’est pas déclaré [-Wx]"},
      {"expected \">>\", \"or\" or an operator after \"emit o\"",
       "attendu après « emit o » : « >> », « or » ou un opérateur"},
      {"expected \"end data\" before the end of the text",
       "attendu avant la fin du texte : « end data »"},
      {"instant 3: expected not door, is present",
       "instant 3 : attendu : non door, observé : présent"},
      // A name may look like words of a sentence.
      {"never a or b: fails in instant 2", "never a or b : échoue à l’instant 2"},
      {"--until: character 3: \"is no signal\" is no signal of the module",
       "--until : caractère 3 : « is no signal » n’est pas un signal du module"},
      {"nobody has ever said this", "nobody has ever said this"},
      {"", ""}};
  for (const auto& [english, said] : sentences)
    EXPECT_EQ(test::plain_blanks(french->sentence(english)), said);
}

TEST(Translation, OnlyWhatAFrameHoldsMakesItKnown) {
  const auto french = PhraseBook::of("fr");
  EXPECT_TRUE(french->knows("instant 3: expected x, is zero"));
  EXPECT_TRUE(french->knows("expected what nobody knows"));
  EXPECT_FALSE(french->knows("instant 3: what nobody knows"));
  EXPECT_FALSE(french->knows("a statement"));
}

TEST(Translation, LongSentencesEnd) {
  const auto french = PhraseBook::of("fr");
  std::string list = "expected ";
  for (int i = 0; i < 100000; ++i) list += "a name, ";
  const std::string said = french->sentence(list + "a value");
  EXPECT_TRUE(said.starts_with("attendu")) << said.substr(0, 100);
}

}  // namespace
}  // namespace kiva

#include "Findings.h"

#include <gtest/gtest.h>

namespace {

using namespace qvdevice;
using Json = nlohmann::ordered_json;
using Tone = Finding::Tone;

Json openIn(const std::string& identifier, int policy, bool answer, const std::string& asked = "-[Sheet list]") {
  return {{"kind", "decision"},
          {"asked", asked},
          {"question", "allowsOpenInWithAppId:"},
          {"argument", identifier},
          {"read", {{"isReady", true}, {"openInPolicy", policy}}},
          {"answer", answer}};
}

} // namespace

TEST(Findings, TellADecisionThePolicyBehindItAndWhoAsked) {
  const auto findings = findingsOf({openIn("com.example.mail", 0, false)});
  ASSERT_EQ(findings.size(), 1U);
  EXPECT_EQ(findings[0].text, "allowsOpenInWithAppId com.example.mail: no (openInPolicy 0)");
  EXPECT_EQ(findings[0].detail, "asked by -[Sheet list]");
  EXPECT_EQ(findings[0].tone, Tone::kRefused);
  EXPECT_EQ(findings[0].decisions, 1);
}

TEST(Findings, NameTogetherWhatGotTheSameAnswerForTheSameReason) {
  const auto findings = findingsOf({openIn("com.example.mail", 1, true), openIn("com.example.notes", 1, true),
                                    openIn("com.example.mail", 1, true, "-[Sheet perform]")});
  ASSERT_EQ(findings.size(), 1U);
  EXPECT_EQ(findings[0].text, "allowsOpenInWithAppId mail, notes: yes (openInPolicy 1)");
  EXPECT_EQ(findings[0].detail, "for com.example.mail, com.example.notes; asked by -[Sheet list], -[Sheet perform]");
  EXPECT_EQ(findings[0].tone, Tone::kAllowed);
  EXPECT_EQ(findings[0].decisions, 2) << "the same question twice is one decision";
}

TEST(Findings, CountMoreThanThreeAndNameThemAllInTheDetail) {
  const auto findings =
      findingsOf({openIn("a.b", 1, true), openIn("a.c", 1, true), openIn("a.d", 1, true), openIn("a.e", 1, true)});
  ASSERT_EQ(findings.size(), 1U);
  EXPECT_EQ(findings[0].text, "allowsOpenInWithAppId, for 4 of them: yes (openInPolicy 1)");
  EXPECT_EQ(findings[0].detail, "for a.b, a.c, a.d, a.e; asked by -[Sheet list]");
  EXPECT_EQ(findings[0].decisions, 4);
}

TEST(Findings, KeepApartWhatWasAnsweredOtherwiseOrForAnotherReason) {
  const auto findings = findingsOf({openIn("a.b", 2, true), openIn("a.c", 2, false), openIn("a.d", 1, true)});
  ASSERT_EQ(findings.size(), 3U);
  EXPECT_EQ(findings[0].text, "allowsOpenInWithAppId a.b: yes (openInPolicy 2)");
  EXPECT_EQ(findings[1].text, "allowsOpenInWithAppId a.c: no (openInPolicy 2)");
  EXPECT_EQ(findings[2].text, "allowsOpenInWithAppId a.d: yes (openInPolicy 1)");
}

TEST(Findings, TellAQuestionWithoutAnArgumentOnce) {
  const Json printing{{"kind", "decision"},
                      {"asked", nullptr},
                      {"question", "allowsPrinting"},
                      {"read", {{"isReady", false}}},
                      {"answer", false}};
  const auto findings = findingsOf({printing, printing});
  ASSERT_EQ(findings.size(), 1U);
  EXPECT_EQ(findings[0].text, "allowsPrinting: no (the SDK is not ready)");
  EXPECT_EQ(findings[0].detail, "");
}

TEST(Findings, TellWhatTheAppSaidOnlyWhenThereIsNothingElse) {
  const Json said{{"kind", "output"}, {"text", "Not shared."}};
  const Json refused{{"kind", "refused"}, {"reason", "no"}};
  ASSERT_EQ(findingsOf({said}).size(), 1U);
  EXPECT_EQ(findingsOf({said})[0].text, "the app says: Not shared.");
  ASSERT_EQ(findingsOf({said, refused}).size(), 1U);
  EXPECT_EQ(findingsOf({said, refused})[0].text, "refused: no");
}

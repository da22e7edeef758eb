#include "DecisionWords.h"

#include <gtest/gtest.h>

namespace {

using namespace qvdevice;
using Json = nlohmann::ordered_json;

Json decision(const char* text) { return Json::parse(text); }

} // namespace

TEST(DecisionInWords, TellsWhoAskedWhatWasAnsweredAndThePolicyBehindIt) {
  EXPECT_EQ(decisionInWords(decision(R"({"asked": "-[UICalloutBar targetForAction:]", "question": "allowsPasteboard",
                                         "read": {"isReady": true, "pasteboardPolicy": 2}, "answer": true})")),
            "-[UICalloutBar targetForAction:] asks allowsPasteboard: yes (pasteboardPolicy 2)");
}

TEST(DecisionInWords, NamesWhatItIsAbout) {
  EXPECT_EQ(decisionInWords(decision(R"({"asked": null, "question": "allowsOpenInWithAppId:", "argument": "org.a",
                                         "read": {"isReady": true, "openInPolicy": 2, "openInWhitelist": ["b", "c"]},
                                         "answer": false})")),
            "allowsOpenInWithAppId org.a: no (openInPolicy 2, openInWhitelist b, c)");
  EXPECT_EQ(decisionInWords(decision(R"({"asked": null, "question": "allowsOpenInWithAppId:", "argument": null,
                                         "read": {"isReady": true, "openInPolicy": 1}, "answer": true})")),
            "allowsOpenInWithAppId nil: yes (openInPolicy 1)");
}

TEST(DecisionInWords, CountsMoreThanThree) {
  EXPECT_EQ(decisionInWords(decision(R"({"question": "mergeExcludedActivityTypes:", "argument": [],
              "read": {"isReady": true, "openInWhitelist": ["a", "b", "c", "d"]}, "answer": ["1", "2", "3", "4"]})")),
            "mergeExcludedActivityTypes none: 4 types (openInWhitelist 4 patterns)");
  EXPECT_EQ(decisionInWords(decision(R"({"question": "mergeExcludedActivityTypes:", "argument": null,
              "read": {"isReady": true, "openInWhitelist": "33 patterns"}, "answer": ["1", "2", "3"]})")),
            "mergeExcludedActivityTypes nil: 1, 2, 3 (openInWhitelist 33 patterns)");
}

TEST(DecisionInWords, SaysWhyNoPolicyWasRead) {
  EXPECT_EQ(decisionInWords(decision(R"({"question": "allowsPrinting", "read": {"isReady": false}, "answer": false})")),
            "allowsPrinting: no (the SDK is not ready)");
  EXPECT_EQ(decisionInWords(decision(R"({"question": "allowsPrinting", "read": {}, "answer": false})")),
            "allowsPrinting: no (there is no SDK)");
}

TEST(DecisionInWords, NamesTheKeyOfTheConfiguration) {
  EXPECT_EQ(decisionInWords(decision(R"({"question": "isLogCapturingEnabled",
              "read": {"isReady": true, "config": {"QV_ZB_WR_ENABLE_LOG_CAPTURE": null}}, "answer": false})")),
            "isLogCapturingEnabled: no (QV_ZB_WR_ENABLE_LOG_CAPTURE nil)");
}

TEST(DecisionInWords, HasAShortFormForOneLikeTheOneBefore) {
  const Json first = decision(R"({"asked": "a", "question": "q:", "argument": "x", "read": {"p": 1}, "answer": true})");
  Json second = first;
  second["argument"] = "y";
  second["answer"] = false;
  EXPECT_TRUE(areAlike(first, second));
  EXPECT_EQ(answerOfDecisionInWords(second), "y: no");
  for (const char* field : {"asked", "question"}) {
    Json other = second;
    other[field] = "other";
    EXPECT_FALSE(areAlike(first, other)) << field;
  }
  second["read"]["p"] = 2;
  EXPECT_FALSE(areAlike(first, second));
  EXPECT_FALSE(areAlike(first, Json::object()));
}

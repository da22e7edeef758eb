#include "Policies.h"

#include <gtest/gtest.h>

namespace {

using zorbel::parsePolicies;
using zorbel::Policies;
using zorbel::Refusal;

Policies taken(const std::string& text) {
  const auto result = parsePolicies(text);
  const auto* refusal = std::get_if<Refusal>(&result);
  EXPECT_EQ(refusal, nullptr) << (refusal != nullptr ? refusal->reason : "");
  return refusal != nullptr ? Policies{} : std::get<Policies>(result);
}

/// "line:column: reason", or "taken".
std::string refused(const std::string& text) {
  const auto result = parsePolicies(text);
  const auto* refusal = std::get_if<Refusal>(&result);
  return refusal == nullptr
             ? "taken"
             : std::to_string(refusal->line) + ":" + std::to_string(refusal->column) + ": " + refusal->reason;
}

std::string startOf(const std::string& text, std::size_t length) { return text.substr(0, length); }

TEST(Policies, ofAnEmptyObjectAreThoseOfAnAppThatNobodyHasEnrolled) {
  const Policies policies = taken("{}");
  EXPECT_FALSE(policies.ready);
  EXPECT_FALSE(policies.readyToTerminate);
  EXPECT_FALSE(policies.checkInRequested);
  EXPECT_EQ(policies.authState, 0);
  EXPECT_EQ(policies.managedPolicy, 0);
  EXPECT_EQ(policies.openInPolicy, 0);
  EXPECT_EQ(policies.pasteboardPolicy, 0);
  EXPECT_EQ(policies.printPolicy, 0);
  EXPECT_FALSE(policies.openInWhitelist.has_value());
  EXPECT_TRUE(policies.config.is_null());
  EXPECT_TRUE(policies.appInfo.is_null());
  EXPECT_TRUE(policies.zbPasteboardTypePrefixes.empty());
  EXPECT_TRUE(policies.appSchemes.empty());
  EXPECT_FALSE(policies.delegateProxy);
}

TEST(Policies, takeEveryKey) {
  const Policies policies = taken(R"({
    "ready": true, "readyToTerminate": true, "checkInRequested": true,
    "authState": 1, "managedPolicy": 2, "openInPolicy": 2, "pasteboardPolicy": -7, "printPolicy": 1,
    "openInWhitelist": ["com.example.*"],
    "config": {"a": [1, null]}, "appInfo": {"token": {"base64": "AAEC"}, "name": "x"},
    "zbPasteboardTypePrefixes": ["zb.%@"], "appSchemes": ["zb1", "zb2"],
    "delegateProxy": true
  })");
  EXPECT_TRUE(policies.ready);
  EXPECT_TRUE(policies.readyToTerminate);
  EXPECT_TRUE(policies.checkInRequested);
  EXPECT_EQ(policies.authState, 1);
  EXPECT_EQ(policies.managedPolicy, 2);
  EXPECT_EQ(policies.openInPolicy, 2);
  EXPECT_EQ(policies.pasteboardPolicy, -7);
  EXPECT_EQ(policies.printPolicy, 1);
  EXPECT_EQ(policies.openInWhitelist, std::vector<std::string>{"com.example.*"});
  EXPECT_EQ(policies.config.dump(), R"({"a":[1,null]})");
  EXPECT_EQ(policies.appInfo["name"], "x");
  EXPECT_EQ(policies.zbPasteboardTypePrefixes, std::vector<std::string>{"zb.%@"});
  EXPECT_EQ(policies.appSchemes, (std::vector<std::string>{"zb1", "zb2"}));
  EXPECT_TRUE(policies.delegateProxy);
}

TEST(Policies, tellAnEmptyWhitelistFromNone) {
  const Policies policies = taken(R"({"openInWhitelist": []})");
  ASSERT_TRUE(policies.openInWhitelist.has_value());
  EXPECT_TRUE(policies.openInWhitelist->empty());
}

TEST(Policies, withATypeThatIsWrongAreRefusedAtTheKeyWithWhatWasExpectedAndFound) {
  EXPECT_EQ(refused(R"({"ready": 1})"), "1:2: ready must be true or false, not the number 1");
  EXPECT_EQ(refused(R"({"readyToTerminate": "yes"})"), "1:2: readyToTerminate must be true or false, not a string");
  EXPECT_EQ(refused(R"({"checkInRequested": null})"), "1:2: checkInRequested must be true or false, not null");
  EXPECT_EQ(refused(R"({"delegateProxy": 0})"), "1:2: delegateProxy must be true or false, not the number 0");
  EXPECT_EQ(refused(R"({"authState": true})"), "1:2: authState must be a whole number, not true");
  EXPECT_EQ(refused(R"({"managedPolicy": 1.5})"), "1:2: managedPolicy must be a whole number, not the number 1.5");
  EXPECT_EQ(refused(R"({"openInPolicy": "2"})"), "1:2: openInPolicy must be a whole number, not a string");
  EXPECT_EQ(refused(R"({"pasteboardPolicy": []})"), "1:2: pasteboardPolicy must be a whole number, not an array");
  EXPECT_EQ(refused(R"({"printPolicy": {}})"), "1:2: printPolicy must be a whole number, not an object");
  EXPECT_EQ(refused(R"({"openInWhitelist": "a"})"), "1:2: openInWhitelist must be an array of strings, not a string");
  EXPECT_EQ(refused(R"({"openInWhitelist": ["a", 2]})"),
            "1:2: openInWhitelist must be an array of strings, not an array with the number 2 in it");
  EXPECT_EQ(refused(R"({"zbPasteboardTypePrefixes": {}})"),
            "1:2: zbPasteboardTypePrefixes must be an array of strings, not an object");
  EXPECT_EQ(refused(R"({"appSchemes": [null]})"),
            "1:2: appSchemes must be an array of strings, not an array with null in it");
  EXPECT_EQ(refused(R"({"config": []})"), "1:2: config must be an object, not an array");
  EXPECT_EQ(refused(R"({"appInfo": 0})"), "1:2: appInfo must be an object, not the number 0");
}

TEST(Policies, withANumberThatNoPolicyCanHoldAreRefused) {
  EXPECT_EQ(refused(R"({"authState": 9223372036854775808})"), "1:2: authState is too large: 9223372036854775808");
}

TEST(Policies, withAnUnknownKeyAreRefusedWithTheNearestKnownOne) {
  EXPECT_EQ(refused("{\n  \"ready\": true,\n  \"openinpolicy\": 1\n}"),
            "3:3: unknown key \"openinpolicy\"; did you mean \"openInPolicy\"?");
  EXPECT_EQ(refused(R"({"printPolcy": 1})"), "1:2: unknown key \"printPolcy\"; did you mean \"printPolicy\"?");
}

TEST(Policies, withAnErrorBehindOtherKeysAreRefusedAtItsOwnLineAndColumn) {
  EXPECT_EQ(refused("{\n\"config\": {\"ready\": 5},\n\t\"printPolicy\": 1, \"authState\": \"x\"}"),
            "3:20: authState must be a whole number, not a string");
}

TEST(Policies, withQuotesAndBackslashesInAKeyAreRefusedWhereTheKeyBegins) {
  EXPECT_EQ(startOf(refused("{ \"a\\\"b\\\\\": 1}"), 4), "1:3:");
}

TEST(Policies, withAKeyGivenTwiceAreRefusedAtTheSecond) {
  EXPECT_EQ(refused("{\"ready\": true,\n \"ready\": false}"), "2:2: \"ready\" is given twice");
}

TEST(Policies, thatAreNoObjectAreRefused) {
  EXPECT_EQ(refused("[]"), "1:1: the policies must be an object, not an array");
  EXPECT_EQ(refused("\n  3"), "2:3: the policies must be an object, not the number 3");
  EXPECT_EQ(refused("null"), "1:1: the policies must be an object, not null");
}

TEST(Policies, thatAreNotJsonAreRefusedAtThePlaceWhereTheyStopBeingIt) {
  EXPECT_EQ(startOf(refused(""), 14), "1:1: not JSON:");
  EXPECT_EQ(startOf(refused("{\n  \"ready\" true\n}"), 15), "2:14: not JSON:");
  EXPECT_EQ(startOf(refused("{\"ready\": true"), 15), "1:15: not JSON:");
  EXPECT_EQ(startOf(refused("{\"ready\": true,}"), 15), "1:16: not JSON:");
  EXPECT_EQ(startOf(refused("{} {}"), 14), "1:4: not JSON:");
  EXPECT_EQ(startOf(refused("{\"config\": {\"a\": \"\xff\"}}"), 15), "1:19: not JSON:");
}

TEST(Policies, withAppDataThatIsNotBase64AreRefusedWithItsName) {
  EXPECT_EQ(refused(R"({"appInfo": {"token": {"base64": "A"}}})"), "1:2: appInfo.token.base64 is not base64");
  EXPECT_EQ(refused(R"({"appInfo": {"tokens": [{"base64": 3}]}})"), "1:2: appInfo.tokens[0].base64 is not base64");
}

TEST(Base64, isDecodedWithAndWithoutPadding) {
  EXPECT_EQ(zorbel::decodeBase64(""), "");
  EXPECT_EQ(zorbel::decodeBase64("Zg=="), "f");
  EXPECT_EQ(zorbel::decodeBase64("Zm8="), "fo");
  EXPECT_EQ(zorbel::decodeBase64("Zm9v"), "foo");
  EXPECT_EQ(zorbel::decodeBase64("AP/+"), std::string("\0\xff\xfe", 3));
}

TEST(Base64, withLettersThatDoNotBelongOrAWrongLengthIsRefused) {
  EXPECT_EQ(zorbel::decodeBase64("Zg="), std::nullopt);
  EXPECT_EQ(zorbel::decodeBase64("Z*9v"), std::nullopt);
  EXPECT_EQ(zorbel::decodeBase64("Z=9v"), std::nullopt);
  EXPECT_EQ(zorbel::decodeBase64("===="), std::nullopt);
}

} // namespace

// Type encodings, made readable.
#include "Util.h"

#include <chrono>
#include <utility>

#include <gtest/gtest.h>

namespace {

std::string name(const std::string &encoding) {
  NSAutoreleasePool *const pool = [[NSAutoreleasePool alloc] init];
  const std::string result = support::text([util() stringForTypeEncoding:encoding.c_str()]);
  [pool drain];
  return result;
}

TEST(TypeEncoding, ofOneCharacterGivesTheTypesName) {
  const std::pair<const char *, const char *> all[] = {{"c", "char"},
                                                       {"i", "int"},
                                                       {"s", "short"},
                                                       {"l", "long"},
                                                       {"q", "long long"},
                                                       {"C", "unsigned char"},
                                                       {"I", "unsigned int"},
                                                       {"S", "unsigned short"},
                                                       {"L", "unsigned long"},
                                                       {"Q", "unsigned long long"},
                                                       {"f", "float"},
                                                       {"d", "double"},
                                                       {"B", "BOOL"},
                                                       {"v", "void"},
                                                       {"*", "char *"},
                                                       {"#", "Class"},
                                                       {":", "SEL"},
                                                       {"?", "unknown"},
                                                       {"b", "bitfield"},
                                                       {"(", "union"},
                                                       {"@", "id"}};
  for (const auto &[encoding, expected] : all)
    EXPECT_EQ(name(encoding), expected) << encoding;
}

TEST(TypeEncoding, thatNamesNothingKnownGivesAnEmptyText) {
  for (const char *encoding :
       {"", "]", "}", ")", "r", "rnNoORV", "0123456789", "\"", "=", "ADjtT%,<>-+ aeg", "\x01\x7f"})
    EXPECT_EQ(name(encoding), "") << encoding;
  EXPECT_EQ(support::text([util() stringForTypeEncoding:nullptr]), "");
}

TEST(TypeEncoding, isReadFromItsFirstKnownCharacterOn) {
  EXPECT_EQ(name("rv"), "void");
  EXPECT_EQ(name("Vv"), "void");
  EXPECT_EQ(name("rnNoORVi"), "int");
  EXPECT_EQ(name("r*"), "char *");
  EXPECT_EQ(name("16i"), "int");
  EXPECT_EQ(name("]i"), "int");
  EXPECT_EQ(name("id"), "int");
  EXPECT_EQ(name("b4"), "bitfield");
  EXPECT_EQ(name("(Name=if)"), "union");
}

TEST(TypeEncoding, ofAPointerIsThatOfWhatFollowsAndAStar) {
  EXPECT_EQ(name("^v"), "void *");
  EXPECT_EQ(name("^^i"), "int * *");
  EXPECT_EQ(name("r^v"), "void *");
  EXPECT_EQ(name("^r^@"), "id * *");
  EXPECT_EQ(name("^*"), "char * *");
  EXPECT_EQ(name("^?"), "unknown *");
  EXPECT_EQ(name("^{CGPoint=dd}"), "struct CGPoint *");
  EXPECT_EQ(name("^@\"NSError\""), "NSError * *");
}

TEST(TypeEncoding, ofAnArrayLeavesOutTheCount) {
  EXPECT_EQ(name("[10i]"), "int[]");
  EXPECT_EQ(name("[i]"), "int[]");
  EXPECT_EQ(name("[2[3f]]"), "float[][]");
  EXPECT_EQ(name("^[5^c]"), "char *[] *");
  EXPECT_EQ(name("[4{Foo=i}]"), "struct 4{Foo[]");
  EXPECT_EQ(name("[{Foo=i}]"), "struct Foo[]");
}

TEST(TypeEncoding, ofAStructureGivesItsName) {
  EXPECT_EQ(name("{CGRect={CGPoint=dd}{CGSize=dd}}"), "struct CGRect");
  EXPECT_EQ(name("{Foo}"), "struct Foo");
  EXPECT_EQ(name("{?=ii}"), "struct ?");
  EXPECT_EQ(name("{}"), "struct ");
  EXPECT_EQ(name("{=i}"), "struct ");
  EXPECT_EQ(name("{{{Foo}}}"), "struct Foo");
  EXPECT_EQ(name("{Foo{Bar=i}}"), "struct Foo{Bar");
  EXPECT_EQ(name("{vector<int>=^i}"), "struct vector<int>");
}

TEST(TypeEncoding, ofAStructureKeepsWhatStandsBeforeTheBraceInTheName) {
  EXPECT_EQ(name("r{Foo=i}"), "struct r{Foo");
  EXPECT_EQ(name("16{Foo=i}"), "struct 16{Foo");
  EXPECT_EQ(name("}{Foo=i}"), "struct Foo");
  EXPECT_EQ(name("={Foo=i}"), "struct ");
  // Behind a pointer the text begins anew.
  EXPECT_EQ(name("r^{Foo=i}"), "struct Foo *");
  EXPECT_EQ(name("^r{Foo=i}"), "struct r{Foo *");
}

TEST(TypeEncoding, ofAnObjectGivesItsClassOrProtocol) {
  EXPECT_EQ(name("@\"NSString\""), "NSString *");
  EXPECT_EQ(name("@\"<NSCopying>\""), "id<NSCopying>");
  EXPECT_EQ(name("@\"<NSCopying><NSCoding>\""), "id<NSCopying><NSCoding>");
  EXPECT_EQ(name("@\"NSView<NSCopying>\""), "NSView<NSCopying> *");
  EXPECT_EQ(name("r@\"NSString\""), "NSString *");
  EXPECT_EQ(name("@\"NSString\"16"), "NSString *");
  EXPECT_EQ(name("@"), "id");
  EXPECT_EQ(name("@16"), "id");
}

TEST(TypeEncoding, ofABlockIsAnObjectsLikeAnyOther) {
  EXPECT_EQ(name("@?"), "id");
  EXPECT_EQ(name("@?<v@?i>"), "id");
}

TEST(TypeEncoding, ofAnObjectAfterOtherQuotationMarksTakesWhatIsBetweenTheFirstTwo) {
  EXPECT_EQ(name("\"x\"@\"NSString\""), "x *");
  EXPECT_EQ(name("\"@\"NSString\""), "@ *");
}

TEST(TypeEncoding, thatBreaksOffIsReadAsFarAsItGoes) {
  EXPECT_EQ(name("^"), " *");
  EXPECT_EQ(name("^^"), " * *");
  EXPECT_EQ(name("["), "[]");
  EXPECT_EQ(name("[10"), "[]");
  EXPECT_EQ(name("^]"), " *");
  EXPECT_EQ(name("{"), "struct ");
  EXPECT_EQ(name("{Foo"), "struct Foo");
  EXPECT_EQ(name("{Foo{"), "struct Foo");
  EXPECT_EQ(name("{}Foo{}=i"), "struct Foo");
  EXPECT_EQ(name("{Foo="), "struct Foo");
  EXPECT_EQ(name("{Foo=i{Bar"), "struct Foo");
  EXPECT_EQ(name("("), "union");
  EXPECT_EQ(name("@\""), " *");
  EXPECT_EQ(name("@\"\""), " *");
  EXPECT_EQ(name("@\"NSStr"), "NSStr *");
  EXPECT_EQ(name("@\"<"), "id<");
}

TEST(TypeEncoding, withNonAsciiNamesKeepsThem) {
  EXPECT_EQ(name("{Größe=d}"), "struct Größe");
  EXPECT_EQ(name("@\"Büro\""), "Büro *");
}

TEST(TypeEncoding, thatIsNotUtf8TakesEachByteForACharacter) {
  EXPECT_EQ(name("{Gr\xf6\xdf"
                 "e=d}"),
            "struct Größe");
}

TEST(TypeEncoding, nestedHundredsOfThousandsDeepIsReadWithoutRunningOutOfStack) {
  constexpr std::size_t deep = 300'000;
  std::string expected = "int";
  for (std::size_t i = 0; i < deep; ++i)
    expected += " *";
  EXPECT_TRUE(name(std::string(deep, '^') + "i") == expected);
  expected = "int";
  for (std::size_t i = 0; i < deep; ++i)
    expected += "[]";
  EXPECT_TRUE(name(std::string(deep, '[') + "i") == expected);
  EXPECT_TRUE(name(std::string(deep, '{')) == "struct ");
  EXPECT_TRUE(name(std::string(deep, '(')) == "union");
}

TEST(TypeEncoding, thatIsVeryLongIsReadInOneGo) {
  constexpr std::size_t length = 5'000'000;
  const auto start = std::chrono::steady_clock::now();
  EXPECT_TRUE(name("{" + std::string(length, 'x') + "=i}") == "struct " + std::string(length, 'x'));
  EXPECT_TRUE(name("@\"" + std::string(length, 'x')) == std::string(length, 'x') + " *");
  EXPECT_EQ(name(std::string(length, 'r') + "v"), "void");
  // Seconds even under a sanitizer; what is quadratic would take hours.
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(60));
}

} // namespace

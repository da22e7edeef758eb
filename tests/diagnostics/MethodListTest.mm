// A class's methods, one a line.
#include "Util.h"

#include <cstdlib>
#include <initializer_list>

#include <gtest/gtest.h>

// Never called; what matters is how they are declared.
@interface QVListed : NSObject
@end
@implementation QVListed
- (NSUInteger)count {
  return 0;
}
- (void)setValue:(id)value forKey:(NSString *)key {
}
- (id)objectAtIndex:(NSUInteger)index {
  return nil;
}
- (NSRect)moved:(NSRect)rect by:(const NSPoint *)distance into:(NSError **)error {
  return rect;
}
- (Class)run:(void (^)(int))block then:(SEL)selector with:(char *)text {
  return Nil;
}
+ (const char *)name {
  return "";
}
@end

namespace {

using Lines = std::vector<std::string>;

Method method(SEL selector) { return class_getInstanceMethod([QVListed class], selector); }

/// A method that is added with this selector and encoding, whatever they say.
Method added(const char *selector, const char *encoding) {
  class_addMethod([QVListed class], sel_registerName(selector),
                  class_getMethodImplementation([QVListed class], @selector(count)), encoding);
  return method(sel_registerName(selector));
}

class MethodList : public testing::Test {
protected:
  void SetUp() override {
    pool = [[NSAutoreleasePool alloc] init];
    support::clearLog();
  }
  void TearDown() override { [pool drain]; }

  static Lines listed(std::initializer_list<Method> methods, NSString *prefix = @"-") {
    std::vector<Method> all(methods);
    [util() logMethods:all.data() count:static_cast<unsigned>(all.size()) withPrefix:prefix];
    return support::log();
  }

  NSAutoreleasePool *pool;
};

TEST_F(MethodList, hasOneLineAtLevelFourForEachMethodInTheOrderGiven) {
  EXPECT_EQ(listed({
              method(@selector(setValue:forKey:)), method(@selector(count)), method(@selector(objectAtIndex:))
            }), (Lines{"4 -(void)setValue:(id) forKey:(id)", "4 -(unsigned long long)count",
                       "4 -(id)objectAtIndex:(unsigned long long)"}));
}

TEST_F(MethodList, ofAMethodWithoutArgumentsHasTheBareSelector) {
  EXPECT_EQ(listed({ method(@selector(count)) }), (Lines{"4 -(unsigned long long)count"}));
}

TEST_F(MethodList, namesStructuresPointersBlocksSelectorsClassesAndStrings) {
  EXPECT_EQ(listed({ method(@selector(moved:by:into:)), method(@selector(run:then:with:)) }),
            (Lines{"4 -(struct _NSRect)moved:(struct _NSRect) by:(struct _NSPoint *) into:(id *)",
                   "4 -(Class)run:(id) then:(SEL) with:(char *)"}));
}

TEST_F(MethodList, ofASelectorWithAnEmptyPieceKeepsIt) {
  EXPECT_EQ(listed({added("first::", "v24@0:8i16f20")}), (Lines{"4 -(void)first:(int) :(float)"}));
}

TEST_F(MethodList, putsThePrefixFirst) {
  EXPECT_EQ(listed(
                { class_getClassMethod([QVListed class], @selector(name)) }, @"+[QVListed] "),
            (Lines{"4 +[QVListed] (char *)name"}));
}

TEST_F(MethodList, withoutAPrefixOrWithAnEmptyOneIsLoggedAllTheSame) {
  EXPECT_EQ(listed({ method(@selector(count)) }, @""), (Lines{"4 (unsigned long long)count"}));
  support::clearLog();
  EXPECT_EQ(listed({ method(@selector(count)) }, nil), (Lines{"4 (null)(unsigned long long)count"}));
}

TEST_F(MethodList, takesPercentSignsForWhatTheyAre) {
  EXPECT_EQ(listed({added("of%@:", "v24@0:8@16")}, @"%s"), (Lines{"4 %s(void)of%@:(id)"}));
}

TEST_F(MethodList, thatIsEmptyLogsNothing) {
  EXPECT_EQ(listed({}), Lines());
  [util() logMethods:nullptr count:0 withPrefix:@"-"];
  EXPECT_EQ(support::log(), Lines());
}

TEST_F(MethodList, withNothingInAPlaceHasALineForItAllTheSame) {
  EXPECT_EQ(listed({ nullptr, method(@selector(count)) }),
            (Lines{"4 -()<null selector>", "4 -(unsigned long long)count"}));
}

TEST_F(MethodList, goesByTheCountAndNotByTheArray) {
  Method all[] = { method(@selector(count)), method(@selector(objectAtIndex:)) };
  [util() logMethods:all count:1 withPrefix:@"-"];
  EXPECT_EQ(support::log(), (Lines{"4 -(unsigned long long)count"}));
}

TEST_F(MethodList, ofAWholeClassHasAsManyLinesAsTheRuntimeCounts) {
  unsigned count = 0;
  Method *const all = class_copyMethodList([NSString class], &count);
  [util() logMethods:all count:count withPrefix:@"-"];
  std::free(all);
  EXPECT_GT(count, 100u);
  EXPECT_EQ(support::log(4).size(), count);
}

TEST_F(MethodList, ofAMethodWithMoreArgumentsThanItsSelectorHasPiecesShowsTheirTypes) {
  EXPECT_EQ(listed({added("odd", "v32@0:8@16i24")}), (Lines{"4 -(void)odd:(id) :(int)"}));
  support::clearLog();
  EXPECT_EQ(listed({added("odd:", "v40@0:8@16i24d32")}), (Lines{"4 -(void)odd:(id) :(int) :(double)"}));
}

TEST_F(MethodList, ofAMethodWithFewerArgumentsThanItsSelectorHasPiecesShowsThoseThatThereAre) {
  EXPECT_EQ(listed({added("few:of:", "v24@0:8@16")}), (Lines{"4 -(void)few:(id)"}));
  support::clearLog();
  EXPECT_EQ(listed({added("none:of:", "v16@0:8")}), (Lines{"4 -(void)none"}));
}

TEST_F(MethodList, ofMethodsWithMalformedEncodingsIsLoggedAllTheSame) {
  EXPECT_EQ(
      listed({added("a:", "v24@0:8{Foo"), added("b:", "^"), added("c:", "v24@0:8@\"NSSt"), added("d:", "Z24@0:8Z")}),
      (Lines{"4 -(void)a:(struct Foo)", "4 -( *)b", "4 -(void)c:(NSSt *)", "4 -()d:()"}));
}

TEST_F(MethodList, ofAClassThatDoesNotExistIsOneLineAtLevelZero) {
  [util() logClassFromString:"QVNoSuchClass"];
  EXPECT_EQ(support::log(), (Lines{"0 Class QVNoSuchClass does not exist"}));
}

TEST_F(MethodList, ofAClassWithAnEmptyNameOrNoneIsOneLineAtLevelZero) {
  [util() logClassFromString:""];
  [util() logClassFromString:nullptr];
  EXPECT_EQ(support::log(), (Lines{"0 Class  does not exist", "0 Class (null) does not exist"}));
}

TEST_F(MethodList, ofAClassByNameLogsNothing) {
  [util() logClassFromString:"QVListed"];
  EXPECT_EQ(support::log(), Lines());
}

} // namespace

// What a method takes and returns, as Apple's runtime tells it and Debian's alone does not.
#import <Foundation/Foundation.h>
#include <objc/runtime.h>

#include <cstdlib>
#include <string>
#include <vector>

#include <gtest/gtest.h>

@interface QVTyped : NSObject
@end
@implementation QVTyped
- (void)plain {
}
- (id)block:(void (^)(int))block object:(id)object real:(double)real {
  return block ? object : nil;
}
- (const char *)text:(const char *)text rect:(NSRect)rect slot:(NSError **)slot {
  return text;
}
@end

namespace {

std::string taken(char *copy) {
  const std::string text = copy ? copy : "none";
  std::free(copy);
  return text;
}

using Types = std::vector<std::string>;

/// What is returned, then what is taken.
Types typesOf(Method method) {
  Types types{taken(method_copyReturnType(method))};
  for (unsigned i = 0; i < method_getNumberOfArguments(method); ++i) {
    types.push_back(taken(method_copyArgumentType(method, i)));
  }
  return types;
}

Types typesOf(SEL selector) { return typesOf(class_getInstanceMethod([QVTyped class], selector)); }

Types typesOf(const char *encoding) {
  static int count = 0;
  const SEL selector = sel_registerName(("typed" + std::to_string(count++)).c_str());
  class_addMethod([QVTyped class], selector, class_getMethodImplementation([QVTyped class], @selector(plain)),
                  encoding);
  return typesOf(selector);
}

TEST(MethodTypes, ofAMethodWithoutArgumentsAreTheReceiverAndTheSelector) {
  EXPECT_EQ(typesOf(@selector(plain)), (Types{"v", "@", ":"}));
}

TEST(MethodTypes, countABlockAsOneArgument) {
  EXPECT_EQ(typesOf(@selector(block:object:real:)), (Types{"@", "@", ":", "@?", "@", "d"}));
}

TEST(MethodTypes, keepQualifiersPointersAndWholeStructuresAndNoOffsets) {
  const Types types = typesOf(@selector(text:rect:slot:));
  ASSERT_EQ(types.size(), 6u);
  EXPECT_EQ(types[0], "r*");
  EXPECT_EQ(types[3], "r*");
  EXPECT_EQ(types[4], @encode(NSRect));
  EXPECT_EQ(types[5], "^@");
}

TEST(MethodTypes, readNamesOfClassesSignaturesOfBlocksArraysUnionsAndBitfields) {
  EXPECT_EQ(typesOf("@\"NSString\"16@0:8@?<v@?i>16[10{Foo=i[2c]}]24(U={Foo}i)32b4+40"),
            (Types{"@\"NSString\"", "@", ":", "@?<v@?i>", "[10{Foo=i[2c]}]", "(U={Foo}i)", "b"}));
}

TEST(MethodTypes, ofAnEncodingThatBreaksOffEndWhereItDoes) {
  EXPECT_EQ(typesOf("^"), (Types{"^"}));
  EXPECT_EQ(typesOf("{Foo=i"), (Types{"{Foo=i"}));
  EXPECT_EQ(typesOf("v24@0:8^"), (Types{"v", "@", ":", "^"}));
  EXPECT_EQ(typesOf("v24@0:8@\"NSSt"), (Types{"v", "@", ":", "@\"NSSt"}));
  EXPECT_EQ(typesOf("v24@0:8@\""), (Types{"v", "@", ":", "@\""}));
  EXPECT_EQ(typesOf("v24@0:8@?<v"), (Types{"v", "@", ":", "@?<v"}));
  EXPECT_EQ(typesOf("v24@0:8[10"), (Types{"v", "@", ":", "[10"}));
  EXPECT_EQ(typesOf("v24@0:8(a{b"), (Types{"v", "@", ":", "(a{b"}));
}

TEST(MethodTypes, thatNobodyKnowsCountAsOneEach) {
  EXPECT_EQ(typesOf("v24@0:8Z16]24"), (Types{"v", "@", ":", "Z", "]"}));
}

TEST(MethodTypes, beyondTheLastArgumentAndOfNoMethodAreNull) {
  EXPECT_EQ(method_copyArgumentType(class_getInstanceMethod([QVTyped class], @selector(plain)), 2), nullptr);
  EXPECT_EQ(method_getNumberOfArguments(nullptr), 0u);
  EXPECT_EQ(method_copyReturnType(nullptr), nullptr);
  EXPECT_EQ(method_copyArgumentType(nullptr, 0), nullptr);
}

} // namespace

// Replacing methods of classes that are in use: what Apple's runtime does and Debian's alone does not.
#import <Foundation/Foundation.h>
#include <objc/runtime.h>

#include <string>

#include <gtest/gtest.h>

@interface QVBase : NSObject
- (int)neighbour;
+ (int)ofClassNeighbour;
@end
@implementation QVBase
- (int)first {
  return 1;
}
- (int)second {
  return 2;
}
- (int)neighbour {
  return 5;
}
+ (int)ofClass {
  return 3;
}
+ (int)ofClassToo {
  return 4;
}
+ (int)ofClassNeighbour {
  return 6;
}
@end

// The runtime's tables come in pieces of 32 selectors, in the order of their registration, which classes share until
// one of them has a method of its own in the piece: the neighbour is such a method.
@interface QVHeir : QVBase
@end
@implementation QVHeir
- (int)neighbour {
  return 50;
}
+ (int)ofClassNeighbour {
  return 60;
}
@end

@interface QVHeirOfHeir : QVHeir
@end
@implementation QVHeirOfHeir
- (int)neighbour {
  return 50;
}
+ (int)ofClassNeighbour {
  return 60;
}
@end

@interface QVOverrider : QVBase
@end
@implementation QVOverrider
- (int)first {
  return 100;
}
@end

// Exchanges its own methods before its first use, as many classes do.
@interface QVSelfExchanger : NSObject
@end
@implementation QVSelfExchanger
+ (void)initialize {
  method_exchangeImplementations(class_getInstanceMethod(self, @selector(first)),
                                 class_getInstanceMethod(self, @selector(second)));
}
- (int)first {
  return 1;
}
- (int)second {
  return 2;
}
@end

// Two classes that nobody has used yet; they have no tables.
@interface QVUntouched : NSObject
@end
@implementation QVUntouched
- (int)first {
  return 7;
}
- (int)second {
  return 8;
}
@end
@interface QVUntouchedToo : NSObject
@end
@implementation QVUntouchedToo
- (int)first {
  return 70;
}
- (int)second {
  return 80;
}
@end

namespace {

int replacement(id, SEL) { return 42; }
const IMP kReplacement = reinterpret_cast<IMP>(&replacement);

/// Makes every class's table.
void useAll() {
  for (Class cls : {[QVBase class], [QVHeir class], [QVHeirOfHeir class], [QVOverrider class]}) {
    EXPECT_GE([[[[cls alloc] init] autorelease] neighbour], 5);
    EXPECT_GE([cls ofClassNeighbour], 6);
  }
}

class MethodReplacement : public testing::Test {
protected:
  void SetUp() override {
    pool = [[NSAutoreleasePool alloc] init];
    useAll();
  }
  void TearDown() override { [pool drain]; }

  /// Asks each class's instance, then through the runtime's look-up, which must agree.
  static std::string firstOf(Class cls) {
    QVBase *const object = [[[cls alloc] init] autorelease];
    const int sent = [object first];
    const auto found =
        reinterpret_cast<int (*)(id, SEL)>(method_getImplementation(class_getInstanceMethod(cls, @selector(first))));
    EXPECT_EQ(sent, found(object, @selector(first))) << class_getName(cls);
    return std::to_string(sent);
  }
  static std::string firsts() {
    std::string all;
    for (Class cls : {[QVBase class], [QVHeir class], [QVHeirOfHeir class], [QVOverrider class]}) {
      all += firstOf(cls) + " ";
    }
    return all;
  }
  NSAutoreleasePool *pool;
};

} // namespace

TEST_F(MethodReplacement, AnExchangeReachesAllThatInheritAndNoneThatOverride) {
  EXPECT_EQ(firsts(), "1 1 1 100 ");
  method_exchangeImplementations(class_getInstanceMethod([QVBase class], @selector(first)),
                                 class_getInstanceMethod([QVBase class], @selector(second)));
  EXPECT_EQ(firsts(), "2 2 2 100 ");
}

TEST_F(MethodReplacement, ANewImplementationReachesAllThatInheritAndNoneThatOverride) {
  EXPECT_EQ(firsts(), "1 1 1 100 ");
  const IMP before = method_setImplementation(class_getInstanceMethod([QVBase class], @selector(first)), kReplacement);
  EXPECT_EQ(reinterpret_cast<int (*)(id, SEL)>(before)(nil, @selector(first)), 1);
  EXPECT_EQ(firsts(), "42 42 42 100 ");
}

TEST_F(MethodReplacement, AReplacedMethodReachesAllThatInheritAndNoneThatOverride) {
  EXPECT_EQ(firsts(), "1 1 1 100 ");
  class_replaceMethod([QVBase class], @selector(first), kReplacement, "i16@0:8");
  EXPECT_EQ(firsts(), "42 42 42 100 ");
}

TEST_F(MethodReplacement, OfAnHeirLeavesItsSuperclassAlone) {
  class_replaceMethod([QVHeir class], @selector(first), kReplacement, "i16@0:8");
  EXPECT_EQ(firsts(), "1 42 42 100 ");
}

TEST_F(MethodReplacement, OfClassMethodsReachesSubclassesToo) {
  EXPECT_EQ([QVHeirOfHeir ofClass], 3);
  method_exchangeImplementations(class_getClassMethod([QVBase class], @selector(ofClass)),
                                 class_getClassMethod([QVBase class], @selector(ofClassToo)));
  EXPECT_EQ([QVBase ofClass], 4);
  EXPECT_EQ([QVHeirOfHeir ofClass], 4);
}

TEST_F(MethodReplacement, AReplacementInFoundationReachesTheClassesBehindIt) {
  // Every concrete class behind NSData, used before.
  NSData *const ofText = [@"text" dataUsingEncoding:NSUTF8StringEncoding];
  NSData *const ofBytes = [NSData dataWithBytes:"abc" length:3];
  NSData *const ofNone = [NSData data];
  NSMutableData *const changing = [NSMutableData dataWithLength:3];
  for (NSData *data in @[ ofText, ofBytes, ofNone, changing ])
    [data hash];
  for (const SEL selector : {
         @selector(writeToFile:atomically:), @selector(writeToFile:options:error:), @selector(writeToURL:atomically:),
             @selector(writeToURL:options:error:)
       }) {
    const Method method = class_getInstanceMethod([NSData class], selector);
    method_setImplementation(method, kReplacement);
    for (NSData *data in @[ ofText, ofBytes, ofNone, changing ]) {
      EXPECT_EQ(class_getMethodImplementation(object_getClass(data), selector), kReplacement)
          << class_getName(object_getClass(data)) << " " << sel_getName(selector);
    }
  }
}

TEST_F(MethodReplacement, InAClassThatIsBeingInitializedIsThereFromItsFirstMessageOn) {
  QVSelfExchanger *const object = [[[QVSelfExchanger alloc] init] autorelease];
  EXPECT_EQ([object first], 2);
  EXPECT_EQ([object second], 1);
}

TEST_F(MethodReplacement, InAClassThatNobodyHasUsedStaysInThatClass) {
  Class const untouched = objc_getClass("QVUntouched");
  method_exchangeImplementations(class_getInstanceMethod(untouched, @selector(first)),
                                 class_getInstanceMethod(untouched, @selector(second)));
  QVUntouchedToo *const other = [[[QVUntouchedToo alloc] init] autorelease];
  EXPECT_EQ([other first], 70);
  EXPECT_EQ([other second], 80);
  QVUntouched *const object = [[[QVUntouched alloc] init] autorelease];
  EXPECT_EQ([object first], 8);
  EXPECT_EQ([object second], 7);
}

TEST(ModuleLoading, AClassMethodAddedToACompiledClassIsFound) {
  ASSERT_TRUE(
      class_addMethod(object_getClass([QVBase class]), sel_registerName("addedLater"), kReplacement, "i16@0:8"));
  EXPECT_EQ(reinterpret_cast<int (*)(id, SEL)>(
                class_getMethodImplementation(object_getClass([QVBase class]), sel_registerName("addedLater")))(
                [QVBase class], sel_registerName("addedLater")),
            42);
  EXPECT_TRUE([QVBase respondsToSelector:sel_registerName("addedLater")]);
  EXPECT_EQ([QVHeir ofClass], 3);
}

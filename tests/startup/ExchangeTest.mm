// +[NSObject qvsbjr_swizzleMethod:withMethod:error:] and its sibling for class methods.
#include "support/Support.h"

#include <objc/runtime.h>

#include <gtest/gtest.h>

@interface NSObject (QVSBJRSwizzle)
+ (BOOL)qvsbjr_swizzleMethod:(SEL)original withMethod:(SEL)alternative error:(NSError **)error;
+ (BOOL)qvsbjr_swizzleClassMethod:(SEL)original withClassMethod:(SEL)alternative error:(NSError **)error;
@end

@interface QVParent : NSObject
@end
@implementation QVParent
- (NSString *)inherited {
  return @"parent's";
}
+ (NSString *)classInherited {
  return @"parent class's";
}
@end

@interface QVChild : QVParent
@end
@implementation QVChild
- (NSString *)own {
  return @"own";
}
- (NSString *)alternative {
  return [NSString stringWithFormat:@"alternative of %@", [self alternative]];
}
- (NSString *)alternativeOfInherited {
  return [NSString stringWithFormat:@"alternative of %@", [self alternativeOfInherited]];
}
- (NSInteger)number {
  return 1;
}
- (int)narrowNumber {
  return 2;
}
+ (NSString *)classOwn {
  return @"class own";
}
+ (NSString *)classAlternative {
  return [NSString stringWithFormat:@"alternative of %@", [self classAlternative]];
}
+ (NSString *)classAlternativeOfInherited {
  return [NSString stringWithFormat:@"alternative of %@", [self classAlternativeOfInherited]];
}
+ (NSInteger)classNumber {
  return 1;
}
@end

@interface QVGrandchild : QVChild
@end
@implementation QVGrandchild
@end

namespace {

class Exchange : public testing::Test {
protected:
  void SetUp() override {
    pool = [[NSAutoreleasePool alloc] init];
    support::clearLog();
  }
  void TearDown() override { [pool drain]; }
  NSAutoreleasePool *pool;
};

std::string description(NSError *error) { return support::text([error localizedDescription]); }

/// The class's own methods with their implementations and encodings, as text: equal texts mean an unchanged class.
std::string picture(Class cls) {
  std::string text;
  unsigned count = 0;
  Method *methods = class_copyMethodList(cls, &count);
  for (unsigned i = 0; i < count; ++i) {
    char line[512];
    snprintf(line, sizeof line, "%s %s %p\n", sel_getName(method_getName(methods[i])),
             method_getTypeEncoding(methods[i]), reinterpret_cast<void *>(method_getImplementation(methods[i])));
    text += line;
  }
  free(methods);
  return text;
}

} // namespace

TEST_F(Exchange, OfTwoOwnMethodsLetsTheAlternativeReachTheOriginalUnderItsOwnName) {
  NSError *error = nil;
  QVChild *child = [[[QVChild alloc] init] autorelease];
  EXPECT_EQ(support::text([child own]), "own");
  EXPECT_TRUE([QVChild qvsbjr_swizzleMethod:@selector(own) withMethod:@selector(alternative) error:&error]);
  EXPECT_EQ(error, nil);
  EXPECT_EQ(support::text([child own]), "alternative of own");
  EXPECT_TRUE(support::log().empty());
}

TEST_F(Exchange, ReachesInstancesOfSubclassesThatWereUsedBefore) {
  QVGrandchild *grandchild = [[[QVGrandchild alloc] init] autorelease];
  EXPECT_EQ(support::text([grandchild own]), "own");
  EXPECT_TRUE([QVChild qvsbjr_swizzleMethod:@selector(own) withMethod:@selector(alternative) error:NULL]);
  EXPECT_EQ(support::text([grandchild own]), "alternative of own");
}

TEST_F(Exchange, OfAnInheritedMethodChangesTheSubclassAlone) {
  QVChild *child = [[[QVChild alloc] init] autorelease];
  QVParent *parent = [[[QVParent alloc] init] autorelease];
  const std::string before = picture([QVParent class]);
  EXPECT_TRUE([QVChild qvsbjr_swizzleMethod:@selector(inherited) withMethod:@selector(alternativeOfInherited)
                                      error:NULL]);
  EXPECT_EQ(support::text([child inherited]), "alternative of parent's");
  EXPECT_EQ(support::text([parent inherited]), "parent's");
  EXPECT_EQ(picture([QVParent class]), before);
}

TEST_F(Exchange, TwiceRestoresTheOriginal) {
  QVChild *child = [[[QVChild alloc] init] autorelease];
  EXPECT_TRUE([QVChild qvsbjr_swizzleMethod:@selector(own) withMethod:@selector(alternative) error:NULL]);
  EXPECT_TRUE([QVChild qvsbjr_swizzleMethod:@selector(own) withMethod:@selector(alternative) error:NULL]);
  EXPECT_EQ(support::text([child own]), "own");
}

TEST_F(Exchange, WithAMissingOriginalIsRefusedAndTheClassUnchanged) {
  NSError *error = nil;
  const std::string before = picture([QVChild class]);
  EXPECT_FALSE([QVChild qvsbjr_swizzleMethod:@selector(noSuchMethod:) withMethod:@selector(alternative) error:&error]);
  EXPECT_EQ(description(error), "+[NSObject(QVSBJRSwizzle) qvsbjr_swizzleMethod:withMethod:error:]: original method "
                                "noSuchMethod: not found for class QVChild");
  EXPECT_EQ(support::text([error domain]), "NSCocoaErrorDomain");
  EXPECT_EQ([error code], -1);
  EXPECT_EQ([[error userInfo] count], 1u);
  EXPECT_EQ(picture([QVChild class]), before);
  EXPECT_TRUE(support::log().empty());
}

TEST_F(Exchange, WithAMissingAlternativeIsRefusedAndTheClassUnchanged) {
  NSError *error = nil;
  const std::string before = picture([QVChild class]);
  EXPECT_FALSE([QVChild qvsbjr_swizzleMethod:@selector(inherited) withMethod:@selector(noSuchMethod) error:&error]);
  EXPECT_EQ(description(error), "+[NSObject(QVSBJRSwizzle) qvsbjr_swizzleMethod:withMethod:error:]: alternate method "
                                "noSuchMethod not found for class QVChild");
  EXPECT_EQ(picture([QVChild class]), before);
}

TEST_F(Exchange, OfDifferingEncodingsIsRefusedNamingTheAlternativeFirstAndTheClassUnchanged) {
  NSError *error = nil;
  // The grandchild inherits both: nothing may be given to it before the encodings are compared.
  const std::string before = picture([QVChild class]) + picture([QVGrandchild class]);
  EXPECT_FALSE([QVGrandchild qvsbjr_swizzleMethod:@selector(number) withMethod:@selector(narrowNumber) error:&error]);
  EXPECT_EQ(description(error),
            "+[NSObject(QVSBJRSwizzle) qvsbjr_swizzleMethod:withMethod:error:]: alternative type encoding for selector "
            "narrowNumber does not match original number in class QVGrandchild");
  EXPECT_EQ(picture([QVChild class]) + picture([QVGrandchild class]), before);
  QVChild *child = [[[QVChild alloc] init] autorelease];
  EXPECT_EQ([child number], 1);
  EXPECT_EQ([child narrowNumber], 2);
}

TEST_F(Exchange, OfEncodingsThatDifferOnlyInAnOffsetIsRefused) {
  Class cls = [QVChild class];
  const IMP implementation = class_getMethodImplementation(cls, @selector(number));
  ASSERT_TRUE(class_addMethod(cls, sel_registerName("oddOffset"), implementation, "q16@0:9"));
  EXPECT_FALSE([QVChild qvsbjr_swizzleMethod:@selector(number) withMethod:sel_registerName("oddOffset") error:NULL]);
}

TEST_F(Exchange, OfAMethodThatWasAddedWithoutAnEncodingIsRefused) {
  support::addMethodWithoutEncoding([QVGrandchild class], "untyped");
  EXPECT_FALSE([QVGrandchild qvsbjr_swizzleMethod:@selector(own) withMethod:sel_registerName("untyped") error:NULL]);
}

TEST_F(Exchange, WithANullErrorSlotRefusesAndStoresNothing) {
  EXPECT_FALSE([QVChild qvsbjr_swizzleMethod:@selector(noSuchMethod) withMethod:@selector(alternative) error:NULL]);
  EXPECT_FALSE([QVChild qvsbjr_swizzleMethod:@selector(own) withMethod:@selector(noSuchMethod) error:NULL]);
  EXPECT_FALSE([QVChild qvsbjr_swizzleMethod:@selector(number) withMethod:@selector(narrowNumber) error:NULL]);
}

TEST_F(Exchange, ThatSucceedsLeavesTheErrorSlotAsItWas) {
  NSError *const mark = [NSError errorWithDomain:@"QVMark" code:1 userInfo:nil];
  NSError *error = mark;
  EXPECT_TRUE([QVChild qvsbjr_swizzleMethod:@selector(own) withMethod:@selector(alternative) error:&error]);
  EXPECT_EQ(error, mark);
}

TEST_F(Exchange, OfClassMethodsWorksTheSame) {
  NSError *error = nil;
  EXPECT_TRUE([QVChild qvsbjr_swizzleClassMethod:@selector(classOwn) withClassMethod:@selector(classAlternative)
                                           error:&error]);
  EXPECT_EQ(support::text([QVChild classOwn]), "alternative of class own");
  EXPECT_EQ(support::text([QVGrandchild classOwn]), "alternative of class own");
}

TEST_F(Exchange, OfAnInheritedClassMethodLeavesTheSuperclassAlone) {
  EXPECT_TRUE([QVChild qvsbjr_swizzleClassMethod:@selector(classInherited)
                                 withClassMethod:@selector(classAlternativeOfInherited)
                                           error:NULL]);
  EXPECT_EQ(support::text([QVChild classInherited]), "alternative of parent class's");
  EXPECT_EQ(support::text([QVParent classInherited]), "parent class's");
}

TEST_F(Exchange, OfClassMethodsRefusedCarriesTheNameOfTheInstanceMethodVariant) {
  NSError *error = nil;
  EXPECT_FALSE([QVChild qvsbjr_swizzleClassMethod:@selector(noSuchMethod) withClassMethod:@selector(classAlternative)
                                            error:&error]);
  EXPECT_EQ(description(error), "+[NSObject(QVSBJRSwizzle) qvsbjr_swizzleMethod:withMethod:error:]: original method "
                                "noSuchMethod not found for class QVChild");
  EXPECT_FALSE([QVChild qvsbjr_swizzleClassMethod:@selector(classNumber) withClassMethod:@selector(classAlternative)
                                            error:&error]);
  EXPECT_EQ(description(error),
            "+[NSObject(QVSBJRSwizzle) qvsbjr_swizzleMethod:withMethod:error:]: alternative type encoding for selector "
            "classAlternative does not match original classNumber in class QVChild");
}

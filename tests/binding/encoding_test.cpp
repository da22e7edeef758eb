#include "Probe.hpp"

#include <gtest/gtest.h>

using namespace qvsb;

namespace {

std::string oracle(const char* selectorName) {
  const Class cls(objc_lookUpClass("QVEncodingOracle"));
  const Method method = class_getInstanceMethod(cls.rawClass(), selector(selectorName).raw);
  return method ? method_getTypeEncoding(method) : "no such method";
}

enum class Wide : unsigned long { zero };
enum Narrow : unsigned char { zero };

} // namespace

TEST(Encoding, OfAMethodThatWritesAFileIsWhatGccWroteIntoFoundation) {
  EXPECT_STREQ((methodEncoding<BOOL, NSString, BOOL>()), "C28@0:8@16C24");
  const Method write = class_getInstanceMethod(objc_lookUpClass("NSData"), selector("writeToFile:atomically:").raw);
  EXPECT_STREQ(method_getTypeEncoding(write), "C28@0:8@16C24");
}

TEST(Encoding, OfNothingButReceiverAndSelector) {
  EXPECT_STREQ((methodEncoding<void>()), "v16@0:8");
  EXPECT_EQ(oracle("nothing"), (methodEncoding<void>()));
}

TEST(Encoding, OfEveryIntegerTypeIsTheCompilersWithSmallOnesTakingFourBytes) {
  EXPECT_EQ(oracle("integers:b:c:d:e:f:g:h:i:j:k:"),
            (methodEncoding<void, char, signed char, unsigned char, short, unsigned short, int, unsigned, long,
                            unsigned long, long long, unsigned long long>()));
  EXPECT_EQ(oracle("cppBool:"), (methodEncoding<bool, bool>()));
}

TEST(Encoding, OfFloatingPointIsTheCompilers) {
  EXPECT_EQ(oracle("reals:b:c:"), (methodEncoding<double, float, double, CGFloat>()));
}

TEST(Encoding, OfClassAndSelectorIsTheCompilers) {
  EXPECT_EQ(oracle("class:selector:"), (methodEncoding<Class, Class, SEL>()));
}

TEST(Encoding, OfABlockDiffersFromThatOfAnObject) {
  EXPECT_EQ(oracle("block:object:"), (methodEncoding<void, Block<void(BOOL)>, Object>()));
  EXPECT_STREQ((methodEncoding<void, Block<void(BOOL)>>()), "v24@0:8@?16");
}

TEST(Encoding, OfCStringsIsTheCompilersConstIncluded) {
  EXPECT_EQ(oracle("strings:b:"), (methodEncoding<const char*, char*, const char*>()));
}

TEST(Encoding, OfPointersToObjectsNumbersAndNothingIsTheCompilers) {
  EXPECT_EQ(oracle("pointers:b:c:d:e:f:g:"),
            (methodEncoding<void*, void*, const void*, NSError*, int*, double*, const int*, BOOL*>()));
}

TEST(Encoding, OfStructuresAndWhatFollowsThemIsTheCompilers) {
  EXPECT_EQ(oracle("rects:b:c:d:e:"), (methodEncoding<CGRect, CGRect, CGPoint, CGSize, BOOL, CGRect*>()));
  EXPECT_EQ(oracle("small:after:"), (methodEncoding<Small, Small, short>()));
  EXPECT_STREQ(typeEncoding<CGRect>(), "{CGRect={CGPoint=dd}{CGSize=dd}}");
}

TEST(Encoding, OfAnEnumerationIsThatOfItsUnderlyingType) {
  EXPECT_STREQ(typeEncoding<Wide>(), "Q");
  EXPECT_STREQ(typeEncoding<Narrow>(), "C");
  EXPECT_EQ(oracle("options:operation:"), (methodEncoding<Wide, Wide, NSInteger>()));
}

TEST(Encoding, OfADerivedHandleIsThatOfAnyObject) {
  EXPECT_STREQ(typeEncoding<NSString>(), "@");
  EXPECT_STREQ(typeEncoding<QVProbe>(), "@");
  EXPECT_STREQ(typeEncoding<NSError*>(), "^@");
}

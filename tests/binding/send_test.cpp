#include "Probe.hpp"

#include <array>
#include <atomic>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

using namespace qvsb;

namespace {

const Object nil;

std::string text(NSString string) { return string ? string.UTF8String() : "(nil)"; }

} // namespace

TEST(Send, GivesEveryResultTypeAsTheMethodReturnedIt) {
  const Strong<QVProbe> probe = QVProbe::make();
  EXPECT_EQ(send<BOOL>(probe.get(), "yes"_sel), YES);
  EXPECT_EQ(send<char>(probe.get(), "charValue"_sel), -7);
  EXPECT_EQ(send<short>(probe.get(), "shortValue"_sel), -300);
  EXPECT_EQ(send<int>(probe.get(), "intValue"_sel), -70000);
  EXPECT_EQ(send<long long>(probe.get(), "longLongValue"_sel), -5000000000LL);
  EXPECT_EQ(send<unsigned long long>(probe.get(), "unsignedLongLongValue"_sel), 18000000000000000000ULL);
  EXPECT_EQ(send<float>(probe.get(), "floatValue"_sel), 1.5F);
  EXPECT_EQ(send<double>(probe.get(), "doubleValue"_sel), 2.25);
  EXPECT_TRUE(send<SEL>(probe.get(), "selectorValue"_sel) == "doubleValue"_sel);
  EXPECT_STREQ(send<Class>(probe.get(), "classValue"_sel).name(), "QVProbe");
  EXPECT_STREQ(send<const char*>(probe.get(), "text"_sel), "text");
  EXPECT_EQ(send<void*>(probe.get(), "pointer"_sel), static_cast<void*>(probe.get().raw()));
  EXPECT_EQ(send<QVProbe>(probe.get(), "me"_sel), probe.get());
}

TEST(Send, ToNilGivesZeroOfEveryResultTypeEvenAfterARealResultWasInTheRegister) {
  const Strong<QVProbe> probe = QVProbe::make();
  send<void>(nil, "nothing"_sel);
  EXPECT_EQ(send<BOOL>(nil, "yes"_sel), NO);
  EXPECT_EQ(send<char>(nil, "charValue"_sel), 0);
  EXPECT_EQ(send<short>(nil, "shortValue"_sel), 0);
  EXPECT_EQ(send<int>(nil, "intValue"_sel), 0);
  EXPECT_EQ(send<long long>(nil, "longLongValue"_sel), 0);
  EXPECT_EQ(send<unsigned long long>(nil, "unsignedLongLongValue"_sel), 0U);
  EXPECT_EQ(send<float>(probe.get(), "floatValue"_sel), 1.5F);
  EXPECT_EQ(send<float>(nil, "floatValue"_sel), 0.0F);
  EXPECT_EQ(send<double>(probe.get(), "doubleValue"_sel), 2.25);
  EXPECT_EQ(send<double>(nil, "doubleValue"_sel), 0.0);
  EXPECT_FALSE(send<SEL>(nil, "selectorValue"_sel));
  EXPECT_FALSE(send<Class>(nil, "classValue"_sel));
  EXPECT_EQ(send<const char*>(nil, "text"_sel), nullptr);
  EXPECT_EQ(send<void*>(nil, "pointer"_sel), nullptr);
  EXPECT_FALSE(send<QVProbe>(nil, "me"_sel));
  const auto rect = send<CGRect>(nil, "rect"_sel);
  EXPECT_EQ(rect.origin.x + rect.origin.y + rect.size.width + rect.size.height, 0.0);
  const auto five = send<Five>(nil, "five"_sel);
  EXPECT_EQ(five.a + five.b + five.c + five.d + five.e, 0.0);
  const auto small = send<Small>(nil, "small"_sel);
  EXPECT_EQ(small.left, 0);
  EXPECT_EQ(small.right, 0.0F);
}

TEST(Send, ToANilHandleThroughADeclaredOperationGivesZero) {
  const QVProbe none;
  EXPECT_EQ(none.number(), 0);
  EXPECT_FALSE(none.greeting());
  none.setNumber(3);
}

TEST(Send, ReturnsStructuresInRegistersAndInMemory) {
  const Strong<QVProbe> probe = QVProbe::make();
  const auto rect = send<CGRect>(probe.get(), "rect"_sel);
  EXPECT_EQ(rect.origin.x, 1);
  EXPECT_EQ(rect.origin.y, 2);
  EXPECT_EQ(rect.size.width, 3);
  EXPECT_EQ(rect.size.height, 4);
  EXPECT_EQ(send<Five>(probe.get(), "five"_sel).e, 5);
  EXPECT_EQ(send<Small>(probe.get(), "small"_sel).left, 3);
  EXPECT_EQ(send<Small>(probe.get(), "small"_sel).right, 0.5F);
}

TEST(Send, PassesStructuresAndNarrowIntegersByValue) {
  const Strong<QVProbe> probe = QVProbe::make();
  EXPECT_EQ(send<double>(probe.get(), "areaOf:times:plus:"_sel, CGRect{{0, 0}, {3, 4}}, 0.5F, Small{10, 0.25F}), 16.25);
  EXPECT_EQ(send<NSInteger>(probe.get(), "sumOf:and:and:and:and:and:and:and:and:"_sel, YES, short{-2}, char{3},
                            NSInteger{4}, static_cast<unsigned char>(255), 1.0F, 2.0, 8, NSInteger{9}),
            1 - 4 + 9 + 16 + 1275 + 6 + 14 + 64 + 81);
}

TEST(Send, ConvertsArgumentsToTheDeclaredTypes) {
  const Strong<QVProbe> probe = QVProbe::make();
  probe->setNumber(short{-5}); // declared NSInteger; a short's upper bits must not be garbage
  EXPECT_EQ(probe->number(), -5);
}

TEST(Send, PassesAVariableTailOfObjectsNumbersAndCStrings) {
  const Strong<QVProbe> probe = QVProbe::make();
  const auto joined =
      VariadicMessage<NSString(NSString)>::send(probe.get(), "join:"_sel, "a"_ns, "b"_ns, "c"_ns, nullptr);
  EXPECT_EQ(text(joined), "abc");
  const auto formatted = VariadicMessage<NSString(NSString)>::send(probe.get(), "format:"_sel, "%@ %d %s %.2f %ld"_ns,
                                                                   "x"_ns, -3, "c string", 2.5, 1L << 40);
  EXPECT_EQ(text(formatted), "x -3 c string 2.50 1099511627776");
}

TEST(Send, VariadicToNilCallsNothing) {
  EXPECT_FALSE(VariadicMessage<NSString(NSString)>::send(nil, "join:"_sel, "a"_ns, nullptr));
}

TEST(Send, FillsAnErrorSlotAndAcceptsANullOne) {
  const Strong<QVProbe> probe = QVProbe::make();
  NSError error;
  EXPECT_EQ(send<BOOL>(probe.get(), "failInto:"_sel, &error), NO);
  ASSERT_TRUE(error);
  EXPECT_EQ(send<NSInteger>(error, "code"_sel), 42);
  EXPECT_EQ(send<BOOL>(probe.get(), "failInto:"_sel, static_cast<NSError*>(nullptr)), NO);
}

TEST(Send, ToSuperSkipsTheClassesOwnImplementation) {
  const Object sub = send<Object>(send<Object>(Class(objc_lookUpClass("QVSubProbe")), "alloc"_sel), "init"_sel);
  const Class subclass(objc_lookUpClass("QVSubProbe"));
  EXPECT_EQ(text(send<NSString>(sub, "greeting"_sel)), "sub");
  EXPECT_EQ(text(Message<NSString()>::sendSuper(sub, subclass, "greeting"_sel)), "probe");
  EXPECT_EQ(send<CGRect>(sub, "rect"_sel).origin.x, 9);
  EXPECT_EQ(Message<CGRect()>::sendSuper(sub, subclass, "rect"_sel).origin.x, 1);
  EXPECT_FALSE(Message<NSString()>::sendSuper(nil, subclass, "greeting"_sel));
  send<void>(sub, "release"_sel);
}

TEST(Selector, OfOneTextIsOneSelectorAndEqualityIsTheRuntimes) {
  EXPECT_TRUE("number"_sel == selector("number"));
  EXPECT_FALSE("number"_sel == "setNumber:"_sel);
  EXPECT_STREQ("setNumber:"_sel.name(), "setNumber:");
  // A selector with types is another pointer for GCC's runtime, and still the same name.
  EXPECT_TRUE("doubleValue"_sel == send<SEL>(QVProbe::make().get(), "selectorValue"_sel));
}

TEST(Selector, OfNothingIsFalseAndEqualsOnlyItself) {
  EXPECT_FALSE(SEL());
  EXPECT_TRUE(SEL() == SEL());
  EXPECT_FALSE(SEL() == "number"_sel);
  EXPECT_STREQ(SEL().name(), "<null selector>");
}

TEST(Lookup, OfAMissingClassIsNilAndIsNotRemembered) {
  EXPECT_FALSE(classNamed<"QVRegisteredLater">());
  objc_registerClassPair(objc_allocateClassPair(objc_lookUpClass("NSObject"), "QVRegisteredLater", 0));
  EXPECT_TRUE(classNamed<"QVRegisteredLater">());
}

TEST(StringConstant, ThatSeveralThreadsUseFirstAtOnceIsOne) {
  std::array<id, 8> got{};
  std::atomic<bool> go{false};
  std::vector<std::thread> threads;
  for (id& each : got) {
    threads.emplace_back([&each, &go] {
      const AutoreleasePool pool;
      while (!go) {
      }
      each = "a constant that nobody has used before"_ns.raw();
    });
  }
  go = true;
  for (std::thread& thread : threads) {
    thread.join();
  }
  for (const id each : got) {
    EXPECT_EQ(each, got[0]);
  }
}

TEST(StringConstant, IsMadeOnceHoldsItsTextAndOutlivesPools) {
  const auto make = [] { return "h\u00e4llo\0w"_ns; };
  id first = nullptr;
  {
    const AutoreleasePool pool;
    first = make().raw();
  }
  EXPECT_EQ(make().raw(), first);
  EXPECT_EQ(send<NSUInteger>(make(), "length"_sel), 7U);
  EXPECT_EQ(text("Sandboxing NSData"_ns), "Sandboxing NSData");
  EXPECT_TRUE(NSString::stringWithUTF8String("abc").isEqual("abc"_ns));
}

#include "Probe.hpp"
#include "platform/objc/exception.hpp"
#include "platform/objc/implement.hpp"

#include <memory>
#include <string>

#include <gtest/gtest.h>

using namespace qvsb;

namespace {

int liveStates = 0;
int initialized = 0;
std::string destroyed;

/// A class with state, of every kind of method.
class Counter : public Implements<Counter> {
public:
  static constexpr const char* className = "QVTestCounter";
  static constexpr const char* superclassName = "QVProbe";
  static constexpr const char* protocols[] = {"NSCopying", "QVNoSuchProtocol"};

  Counter() { ++liveStates; }
  ~Counter() {
    --liveStates;
    destroyed += "state ";
  }
  void dealloc() { destroyed += "dealloc "; }

  Object init() {
    const auto made = super<Object>("init"_sel);
    value_ = 10;
    return made;
  }
  NSInteger add(NSInteger step) { return value_ += step; }
  NSInteger value() const { return value_; }
  NSString greeting() const { return NSString::stringWithFormat("counter and %@"_ns, super<NSString>("greeting"_sel)); }
  CGRect rect() { return {{1, 1}, {static_cast<double>(value_), 1}}; }
  Object identity() { return self(); }
  void setFriend(Object other) { friend_ = other; }
  Object getFriend() const { return friend_.get(); }

  static void initialize(Class, SEL) { ++initialized; }
  static Object shared(Class self, SEL) {
    return Strong<NSObject>::adopt(NSObject(send<Object>(send<Object>(self, "alloc"_sel), "init"_sel).raw()))
        .autorelease();
  }

  static constexpr MethodEntry instanceMethods[] = {
      member<&Counter::init>("init"),
      member<&Counter::add>("add:"),
      member<&Counter::value>("value"),
      member<&Counter::greeting>("greeting"),
      member<&Counter::rect>("rect"),
      member<&Counter::identity>("identity"),
      member<&Counter::setFriend>("setFriend:"),
      member<&Counter::getFriend>("friend"),
  };
  static constexpr MethodEntry classMethods[] = {
      method<&Counter::initialize>("initialize"),
      method<&Counter::shared>("shared"),
  };

private:
  NSInteger value_ = 1;
  std::string text_ = "something that needs its destructor to give memory back";
  Strong<Object> friend_;
};

class DerivedCounter : public Implements<DerivedCounter> {
public:
  static constexpr const char* className = "QVTestDerivedCounter";
  static constexpr const char* superclassName = "QVTestCounter";
  NSInteger add(NSInteger step) { return super<NSInteger>("add:"_sel, step * factor_); }
  static constexpr MethodEntry instanceMethods[] = {member<&DerivedCounter::add>("add:")};

private:
  NSInteger factor_ = 3;
};

class WrongOverride : public Implements<WrongOverride> {
public:
  static constexpr const char* className = "QVTestWrongOverride";
  static constexpr const char* superclassName = "QVProbe";
  int number() { return 0; }
  static constexpr MethodEntry instanceMethods[] = {member<&WrongOverride::number>("number")};
};

class Orphan : public Implements<Orphan> {
public:
  static constexpr const char* className = "QVTestOrphan";
  static constexpr const char* superclassName = "QVNoSuchClass";
  void nothing() {}
  static constexpr MethodEntry instanceMethods[] = {member<&Orphan::nothing>("nothing")};
};

class NameTaken : public Implements<NameTaken> {
public:
  static constexpr const char* className = "QVProbe";
  static constexpr const char* superclassName = "NSObject";
  void nothing() {}
  static constexpr MethodEntry instanceMethods[] = {member<&NameTaken::nothing>("nothing")};
};

Strong<NSObject> make(Class cls) {
  return Strong<NSObject>::adopt(NSObject(send<Object>(send<Object>(cls, "alloc"_sel), "init"_sel).raw()));
}

template <class Body> std::string reasonOf(Body body) {
  std::string reason;
  tryCatch(body, [&](Object exception) {
    reason = NSException::from(exception).reason().UTF8String();
    return true;
  });
  return reason;
}

class Implement : public testing::Test {
protected:
  void SetUp() override { cls = registerClass<Counter>(); }
  Class cls;
};

} // namespace

TEST_F(Implement, IsFoundByNameWithItsSuperclassProtocolAndEncodings) {
  EXPECT_EQ(Class(objc_lookUpClass("QVTestCounter")), cls);
  EXPECT_STREQ(class_getName(class_getSuperclass(cls.rawClass())), "QVProbe");
  EXPECT_TRUE(send<BOOL>(cls, "conformsToProtocol:"_sel, Object(objc_getProtocol("NSCopying"))));
  EXPECT_STREQ(method_getTypeEncoding(class_getInstanceMethod(cls.rawClass(), selector("add:").raw)), "q24@0:8q16");
}

TEST_F(Implement, StateIsBuiltBeforeInitAndDestroyedAfterItsOwnDealloc) {
  destroyed.clear();
  {
    const auto counter = make(cls);
    EXPECT_EQ(liveStates, 1);
    EXPECT_EQ(send<NSInteger>(counter.get(), "value"_sel), 10);
  }
  EXPECT_EQ(liveStates, 0);
  EXPECT_EQ(destroyed, "dealloc state ");
}

TEST_F(Implement, InstancesHaveStatesOfTheirOwn) {
  const auto first = make(cls);
  const auto second = make(cls);
  EXPECT_EQ(send<NSInteger>(first.get(), "add:"_sel, NSInteger{5}), 15);
  EXPECT_EQ(send<NSInteger>(second.get(), "value"_sel), 10);
  EXPECT_EQ(Counter::of(first.get()).value(), 15);
}

TEST_F(Implement, ReachesTheSuperclassesImplementation) {
  const AutoreleasePool pool;
  EXPECT_STREQ(send<NSString>(make(cls).get(), "greeting"_sel).UTF8String(), "counter and probe");
}

TEST_F(Implement, ReturnsStructuresAndItself) {
  const auto counter = make(cls);
  EXPECT_EQ(send<CGRect>(counter.get(), "rect"_sel).size.width, 10);
  EXPECT_EQ(send<Object>(counter.get(), "identity"_sel), counter.get());
}

TEST_F(Implement, StrongMembersReleaseWhatTheyHeld) {
  const int before = QVProbe::live();
  {
    const auto counter = make(cls);
    send<void>(counter.get(), "setFriend:"_sel, Object(QVProbe::make().get()));
    EXPECT_EQ(QVProbe::live(), before + 2);
    EXPECT_TRUE(send<Object>(counter.get(), "friend"_sel));
  }
  EXPECT_EQ(QVProbe::live(), before);
}

TEST_F(Implement, ClassMethodsRunAndInitializeRunsOnceBeforeThem) {
  const AutoreleasePool pool;
  EXPECT_TRUE(send<Object>(cls, "shared"_sel));
  EXPECT_TRUE(send<Object>(cls, "shared"_sel));
  EXPECT_EQ(initialized, 1);
}

TEST_F(Implement, ASubclassOfOursHasBothStates) {
  const Class derived = registerClass<DerivedCounter>();
  const auto counter = make(derived);
  EXPECT_EQ(send<NSInteger>(counter.get(), "add:"_sel, NSInteger{2}), 16);
  EXPECT_EQ(liveStates, 1);
}

TEST_F(Implement, RegisteringTwiceChangesNothing) { EXPECT_EQ(registerClass<Counter>(), cls); }

TEST_F(Implement, AnOverrideOfAnotherSignatureIsRefusedWithBothEncodings) {
  EXPECT_EQ(reasonOf([] { registerClass<WrongOverride>(); }),
            "invalid override -[QVTestWrongOverride number]: declared as i16@0:8, but QVProbe has it as q16@0:8");
  EXPECT_EQ(objc_lookUpClass("QVTestWrongOverride"), nullptr);
}

TEST_F(Implement, ANameThatIsTakenIsRefusedAndItsClassStays) {
  EXPECT_EQ(reasonOf([] { registerClass<NameTaken>(); }), "class QVProbe cannot be registered: the name is taken");
  EXPECT_EQ(QVProbe::make()->number(), 0);
}

TEST_F(Implement, AMissingSuperclassIsNamed) {
  EXPECT_EQ(reasonOf([] { registerClass<Orphan>(); }),
            "class QVTestOrphan cannot be registered: its superclass QVNoSuchClass does not exist");
}

namespace {

NSInteger doubled(QVProbe self, SEL) { return 2 * self.number(); }
NSInteger answer(Class, SEL) { return 42; }
NSInteger replacedNumber(QVProbe, SEL) { return -1; }
constexpr MethodEntry categoryMethods[] = {method<&doubled>("doubled"), method<&replacedNumber>("number")};
constexpr MethodEntry categoryClassMethods[] = {method<&answer>("answer")};

} // namespace

TEST(Category, AddsMethodsToTheClassAndItsSubclassesAndReplacesNone) {
  addCategory({"QVProbe", "Test", categoryMethods, categoryClassMethods});
  const Strong<QVProbe> probe = QVProbe::make();
  probe->setNumber(21);
  EXPECT_EQ(send<NSInteger>(probe.get(), "doubled"_sel), 42);
  EXPECT_EQ(probe->number(), 21);
  EXPECT_EQ(send<NSInteger>(QVProbe::classObject(), "answer"_sel), 42);
  EXPECT_EQ(send<NSInteger>(Class(objc_lookUpClass("QVSubProbe")), "answer"_sel), 42);
}

TEST(Category, OnAClassThatThePlatformLacksDoesNothing) {
  addCategory({"QVNoSuchClass", "Test", categoryMethods, categoryClassMethods});
  EXPECT_EQ(objc_lookUpClass("QVNoSuchClass"), nullptr);
}

// The pattern that every installer follows.
#include "platform/objc/ownership.hpp"
#include "startup/HookGroup.hpp"
#include "startup/NSObject+QVSBJRSwizzle.hpp"
#include "support/Log.hpp"

#include <gtest/gtest.h>

using namespace qvsb;

namespace {

NSInteger sb_first(NSObject self, SEL) { return 10 + send<NSInteger>(self, "sb_first"_sel); }
NSInteger sb_second(NSObject self, SEL) { return 20 + send<NSInteger>(self, "sb_second"_sel); }
int sb_third(NSObject, SEL) { return 0; }
NSInteger sb_ofClass(Class self, SEL) { return 40 + send<NSInteger>(self, "sb_ofClass"_sel); }

using Lines = std::vector<std::string>;

class Installer : public testing::Test {
protected:
  void SetUp() override {
    addCategory(NSObjectQVSBJRSwizzle);
    support::clearLog();
  }

  /// A fresh class below the platform's, so that no test sees another's hooks.
  static Class makeTarget(const char* name) {
    objc_class* cls = objc_allocateClassPair(objc_lookUpClass("QVHookTarget"), name, 0);
    objc_registerClassPair(cls);
    return Class(cls);
  }
  static NSInteger ask(Class cls, SEL selector) {
    const auto object =
        Strong<NSObject>::adopt(NSObject(send<Object>(send<Object>(cls, "alloc"_sel), "init"_sel).raw()));
    return send<NSInteger>(object.get(), selector);
  }

private:
  const AutoreleasePool pool_;
};

} // namespace

TEST_F(Installer, LogsItsLineThenExchangesItsPairs) {
  static constexpr Hook hooks[] = {hook<&sb_first>("first", "sb_first"), hook<&sb_second>("second", "sb_second")};
  const Class cls = makeTarget("QVTargetA");
  const HookGroup group{"QVTargetASandboxInit", "QVTargetA", HookedMethods::instance, hooks};
  addReplacements(group);
  EXPECT_EQ(ask(cls, "first"_sel), 1);
  installHooks(group, "Sandboxing QVTargetA"_ns);
  EXPECT_EQ(ask(cls, "first"_sel), 11);
  EXPECT_EQ(ask(cls, "second"_sel), 22);
  EXPECT_EQ(ask(Class(objc_lookUpClass("QVHookTarget")), "first"_sel), 1);
  EXPECT_EQ(support::log(), (Lines{"3 Sandboxing QVTargetA"}));
}

TEST_F(Installer, WhoseFirstExchangeFailsLogsOneLineAndInstallsNoneOfItsLaterPairs) {
  static constexpr Hook hooks[] = {hook<&sb_third>("third", "sb_third"), hook<&sb_second>("second", "sb_second")};
  const Class cls = makeTarget("QVTargetB");
  const HookGroup group{"QVTargetBSandboxInit", "QVTargetB", HookedMethods::instance, hooks};
  addReplacements(group);
  installHooks(group, "Sandboxing QVTargetB"_ns);
  EXPECT_EQ(ask(cls, "second"_sel), 2);
  EXPECT_EQ(support::log(),
            (Lines{"3 Sandboxing QVTargetB",
                   "0 QVTargetBSandboxInit: Caught HookException: +[NSObject(QVSBJRSwizzle) "
                   "qvsbjr_swizzleMethod:withMethod:error:]: alternative type encoding for selector sb_third does not "
                   "match original third in class QVTargetB"}));
}

TEST_F(Installer, WhoseSecondExchangeFailsKeepsTheFirst) {
  static constexpr Hook hooks[] = {hook<&sb_first>("first", "sb_first"), hook<&sb_third>("third", "sb_third"),
                                   hook<&sb_second>("second", "sb_second")};
  const Class cls = makeTarget("QVTargetC");
  const HookGroup group{"QVTargetCSandboxInit", "QVTargetC", HookedMethods::instance, hooks};
  addReplacements(group);
  installHooks(group, "Sandboxing QVTargetC"_ns);
  EXPECT_EQ(ask(cls, "first"_sel), 11);
  EXPECT_EQ(ask(cls, "second"_sel), 2);
  EXPECT_EQ(support::log(0).size(), 1U);
}

TEST_F(Installer, OfClassMethodsExchangesThem) {
  static constexpr Hook hooks[] = {hook<&sb_ofClass>("ofClass", "sb_ofClass")};
  const Class cls = makeTarget("QVTargetD");
  const HookGroup group{"QVTargetDSandboxInit", "QVTargetD", HookedMethods::ofClass, hooks};
  addReplacements(group);
  installHooks(group, "Sandboxing QVTargetD"_ns);
  EXPECT_EQ(send<NSInteger>(cls, "ofClass"_sel), 44);
  EXPECT_EQ(send<NSInteger>(Class(objc_lookUpClass("QVHookTarget")), "ofClass"_sel), 4);
}

TEST_F(Installer, OfClassMethodsThatFailsHasNoDescriptionBecauseItAsksForNoError) {
  static constexpr Hook hooks[] = {hook<&sb_ofClass>("noSuchMethod", "sb_ofClass")};
  makeTarget("QVTargetE");
  const HookGroup group{"QVTargetESandboxInit", "QVTargetE", HookedMethods::ofClass, hooks};
  addReplacements(group);
  installHooks(group, "Sandboxing QVTargetE"_ns);
  EXPECT_EQ(support::log(), (Lines{"3 Sandboxing QVTargetE", "0 QVTargetESandboxInit: Caught HookException: (null)"}));
}

TEST_F(Installer, OfAClassThatThePlatformLacksLogsItsLineAndTheException) {
  static constexpr Hook hooks[] = {hook<&sb_first>("first", "sb_first")};
  const HookGroup group{"QVNoSuchClassSandboxInit", "QVNoSuchClass", HookedMethods::instance, hooks};
  addReplacements(group);
  installHooks(group, "Sandboxing QVNoSuchClass"_ns);
  EXPECT_EQ(support::log(),
            (Lines{"3 Sandboxing QVNoSuchClass", "0 QVNoSuchClassSandboxInit: Caught HookException: (null)"}));
}

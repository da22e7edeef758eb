// Whether the platform can show the extension at all.
#include "ExtensionTest.h"

#include <objc/runtime.h>

#include <map>

namespace {

NSString *version;
NSString *systemVersion(id, SEL) { return version; }

class PasscodePlatform : public ExtensionTest {
protected:
  void SetUp() override {
    ExtensionTest::SetUp();
    replaceMethod([UIDevice class], "systemVersion", reinterpret_cast<IMP>(&systemVersion));
    static IMP original;
    original = class_getMethodImplementation(object_getClass([NSObject class]), @selector(instancesRespondToSelector:));
    // A method of the one class, in front of what it inherits.
    class_addMethod(object_getClass([UIActivityViewController class]), @selector(instancesRespondToSelector:),
                    reinterpret_cast<IMP>(+[](id self, SEL selector, SEL asked) -> BOOL {
                      const std::string name = sel_getName(asked);
                      if (name != "_availableActivities" && name != "_performActivity:" &&
                          name != "setShouldMatchOnlyUserElectedExtensions:")
                        return reinterpret_cast<BOOL (*)(id, SEL, SEL)>(original)(self, selector, asked);
                      note(name);
                      return answers[name];
                    }), "C24@0:8:16");
  }

  BOOL can(NSString *release) {
    version = release;
    take();
    return [manager() canAppDisplayPasscodeExtension];
  }

  static inline std::map<std::string, BOOL> answers;
};

const std::string kAvailable = "_availableActivities";
const std::string kPerform = "_performActivity:";
const std::string kElected = "setShouldMatchOnlyUserElectedExtensions:";

} // namespace

TEST_F(PasscodePlatform, Below8IsAskedNothingMore) {
  answers = {{kAvailable, YES}, {kPerform, YES}, {kElected, YES}};
  for (NSString *release : {@"7.1.2", @"7.9", @"4.3", @"8"}) {
    EXPECT_EQ(can(release), NO) << support::text(release);
    EXPECT_EQ(take(), Lines{});
  }
}

TEST_F(PasscodePlatform, WithoutTheListOfActivitiesCannot) {
  answers = {{kAvailable, NO}, {kPerform, YES}, {kElected, YES}};
  EXPECT_EQ(can(@"9.0"), NO);
  EXPECT_EQ(take(), Lines{kAvailable});
}

TEST_F(PasscodePlatform, WithoutTheirPerformanceCannot) {
  answers = {{kAvailable, YES}, {kPerform, NO}, {kElected, YES}};
  EXPECT_EQ(can(@"9.0"), NO);
  EXPECT_EQ(take(), (Lines{kAvailable, kPerform}));
}

TEST_F(PasscodePlatform, From8To8_2CanWithoutTheThirdTest) {
  answers = {{kAvailable, YES}, {kPerform, YES}, {kElected, NO}};
  for (NSString *release : {@"8.0", @"8.0.2", @"8.2", @"8.2.9"}) {
    EXPECT_EQ(can(release), YES) << support::text(release);
    EXPECT_EQ(take(), (Lines{kAvailable, kPerform}));
  }
}

TEST_F(PasscodePlatform, From8_3OnCanIfExtensionsCanBeMatched) {
  for (const BOOL elected : {YES, NO}) {
    answers = {{kAvailable, YES}, {kPerform, YES}, {kElected, elected}};
    for (NSString *release : {@"8.3", @"8.4.1", @"9.0", @"17.5"}) {
      EXPECT_EQ(can(release), elected) << support::text(release);
      EXPECT_EQ(take(), (Lines{kAvailable, kPerform, kElected}));
    }
  }
}

TEST_F(PasscodePlatform, ComparesReleasesAsNumbers) {
  answers = {{kAvailable, YES}, {kPerform, YES}, {kElected, NO}};
  // As texts, 10.0 comes before 8.0, and 8.10 before 8.3.
  EXPECT_EQ(can(@"10.0"), NO);
  EXPECT_EQ(take(), (Lines{kAvailable, kPerform, kElected}));
  EXPECT_EQ(can(@"8.10"), NO);
  EXPECT_EQ(take(), (Lines{kAvailable, kPerform, kElected}));
}

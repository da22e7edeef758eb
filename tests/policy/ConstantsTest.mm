// The library's exported constants, as other code gets at them.
#include "Policy.h"

#include <dlfcn.h>

namespace {

struct Constant {
  const char *name;
  const char *value;
};

void PrintTo(const Constant &constant, std::ostream *stream) { *stream << constant.value; }

class Exported : public testing::TestWithParam<Constant> {};

} // namespace

TEST_P(Exported, IsAStringOfItsValueInAVariableOfTheLibrary) {
  NSAutoreleasePool *const pool = [[NSAutoreleasePool alloc] init];
  void *const variable = dlsym(RTLD_DEFAULT, GetParam().name);
  ASSERT_NE(variable, nullptr);
  Dl_info info;
  ASSERT_NE(dladdr(variable, &info), 0);
  EXPECT_NE(std::string(info.dli_fname).find("libQVSandbox"), std::string::npos) << info.dli_fname;
  NSString *const value = *static_cast<NSString *const *>(variable);
  ASSERT_TRUE([value isKindOfClass:[NSString class]]);
  EXPECT_STREQ([value UTF8String], GetParam().value);
  [pool drain];
}

INSTANTIATE_TEST_SUITE_P(
    Constants, Exported,
    testing::Values(Constant{"kZBBundleIDSplitter", "."}, Constant{"kAppleMobileMail", "com.apple.mobilemail"},
                    Constant{"kAppleNotes", "com.apple.mobilenotes"},
                    Constant{"kAppleNotesShareExtension", "com.apple.mobilenotes.SharingExtension"},
                    Constant{"kApplePhotoStreamService", "com.apple.mobileslideshow.StreamShareService"},
                    Constant{"UIActivityTypeQuickLook", "com.apple.UIKit.activity.Quicklook"},
                    Constant{"UIActivityTypeOpenWithAppIOS9", "com.apple.UIKit.activity.OpenWithApp-"},
                    Constant{"UIActivityTypeImportToAppIOS10", "com.apple.UIKit.activity.Open.Copy."},
                    Constant{"UIActivityTypeOpenWithAppIOS11",
                             "com.apple.UIKit.activity.RemoteOpenInApplication-ByCopy"}),
    [](const auto &tested) { return std::string(tested.param.name); });

extern "C" NSString *const kAppleNotes;

namespace {
// Before any test runs, as an app's own code at load would have it.
NSString *const atLoad = kAppleNotes;
} // namespace

TEST(Constants, HaveTheirValuesBeforeTheFirstCodeOfAnAppThatIsLinkedToTheLibrary) {
  NSAutoreleasePool *const pool = [[NSAutoreleasePool alloc] init];
  EXPECT_STREQ([atLoad UTF8String], "com.apple.mobilenotes");
  [pool drain];
}

#include "Constants.hpp"

extern "C" {
constinit qvsb::NSString kZBBundleIDSplitter{};
constinit qvsb::NSString kAppleMobileMail{};
constinit qvsb::NSString kAppleNotes{};
constinit qvsb::NSString kAppleNotesShareExtension{};
constinit qvsb::NSString kApplePhotoStreamService{};
constinit qvsb::NSString UIActivityTypeQuickLook{};
constinit qvsb::NSString UIActivityTypeOpenWithAppIOS9{};
constinit qvsb::NSString UIActivityTypeImportToAppIOS10{};
constinit qvsb::NSString UIActivityTypeOpenWithAppIOS11{};
}

namespace qvsb {

void publishConstants() {
  kZBBundleIDSplitter = "."_ns;
  kAppleMobileMail = "com.apple.mobilemail"_ns;
  kAppleNotes = "com.apple.mobilenotes"_ns;
  kAppleNotesShareExtension = "com.apple.mobilenotes.SharingExtension"_ns;
  kApplePhotoStreamService = "com.apple.mobileslideshow.StreamShareService"_ns;
  UIActivityTypeQuickLook = "com.apple.UIKit.activity.Quicklook"_ns;
  UIActivityTypeOpenWithAppIOS9 = "com.apple.UIKit.activity.OpenWithApp-"_ns;
  UIActivityTypeImportToAppIOS10 = "com.apple.UIKit.activity.Open.Copy."_ns;
  UIActivityTypeOpenWithAppIOS11 = "com.apple.UIKit.activity.RemoteOpenInApplication-ByCopy"_ns;
}

} // namespace qvsb

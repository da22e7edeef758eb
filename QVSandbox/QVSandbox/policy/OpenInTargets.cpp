#include "OpenInTargets.hpp"

#include "../platform/UIKit/UIActivity.hpp"
#include "Constants.hpp"

namespace qvsb {

const std::array<NSString, 19>& openInTargets() {
  static const std::array<NSString, 19> targets = {
      UIActivityTypePostToFacebook(),
      UIActivityTypePostToTwitter(),
      UIActivityTypePostToWeibo(),
      UIActivityTypeMessage(),
      UIActivityTypeMail(),
      UIActivityTypePrint(),
      UIActivityTypeCopyToPasteboard(),
      UIActivityTypeAssignToContact(),
      UIActivityTypeSaveToCameraRoll(),
      UIActivityTypeAddToReadingList(),
      UIActivityTypePostToFlickr(),
      UIActivityTypePostToVimeo(),
      UIActivityTypePostToTencentWeibo(),
      UIActivityTypeAirDrop(),
      UIActivityTypeQuickLook,
      UIActivityTypeMail(), // a second time, in the place of the mail app, which is not listed
      kAppleNotes,
      kAppleNotesShareExtension,
      kApplePhotoStreamService,
  };
  return targets;
}

} // namespace qvsb

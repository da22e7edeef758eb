// The library's exported constants. For other code each is an `extern NSString *const`, which is what a variable of a
// handle's type looks like in memory. They have their values from the first load-time entry on.
#pragma once

#include "../platform/Foundation/NSString.hpp"

/// What separates the pieces of an app identifier.
QVSB_EXPORT qvsb::NSString kZBBundleIDSplitter;

// Apps and extensions of the platform's maker, by their identifiers.
QVSB_EXPORT qvsb::NSString kAppleMobileMail;
QVSB_EXPORT qvsb::NSString kAppleNotes;
QVSB_EXPORT qvsb::NSString kAppleNotesShareExtension;
QVSB_EXPORT qvsb::NSString kApplePhotoStreamService;

// Activity types that the platform knows but does not export.
QVSB_EXPORT qvsb::NSString UIActivityTypeQuickLook;
// The way from a share sheet to another app, by platform release. An app identifier follows the first two.
QVSB_EXPORT qvsb::NSString UIActivityTypeOpenWithAppIOS9;
QVSB_EXPORT qvsb::NSString UIActivityTypeImportToAppIOS10;
QVSB_EXPORT qvsb::NSString UIActivityTypeOpenWithAppIOS11;

namespace qvsb {

/// Gives the constants their values; once, at load.
void publishConstants();

} // namespace qvsb

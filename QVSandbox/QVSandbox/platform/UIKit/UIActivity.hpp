// The names of the platform's own activities: what can be done with the app's data from a share sheet.
#pragma once

#include "../Foundation/NSString.hpp"

extern "C" {
extern objc_object* qvsbActivityTypePostToFacebook QVSB_SYMBOL(UIActivityTypePostToFacebook);
extern objc_object* qvsbActivityTypePostToTwitter QVSB_SYMBOL(UIActivityTypePostToTwitter);
extern objc_object* qvsbActivityTypePostToWeibo QVSB_SYMBOL(UIActivityTypePostToWeibo);
extern objc_object* qvsbActivityTypeMessage QVSB_SYMBOL(UIActivityTypeMessage);
extern objc_object* qvsbActivityTypeMail QVSB_SYMBOL(UIActivityTypeMail);
extern objc_object* qvsbActivityTypePrint QVSB_SYMBOL(UIActivityTypePrint);
extern objc_object* qvsbActivityTypeCopyToPasteboard QVSB_SYMBOL(UIActivityTypeCopyToPasteboard);
extern objc_object* qvsbActivityTypeAssignToContact QVSB_SYMBOL(UIActivityTypeAssignToContact);
extern objc_object* qvsbActivityTypeSaveToCameraRoll QVSB_SYMBOL(UIActivityTypeSaveToCameraRoll);
extern objc_object* qvsbActivityTypeAddToReadingList QVSB_SYMBOL(UIActivityTypeAddToReadingList);
extern objc_object* qvsbActivityTypePostToFlickr QVSB_SYMBOL(UIActivityTypePostToFlickr);
extern objc_object* qvsbActivityTypePostToVimeo QVSB_SYMBOL(UIActivityTypePostToVimeo);
extern objc_object* qvsbActivityTypePostToTencentWeibo QVSB_SYMBOL(UIActivityTypePostToTencentWeibo);
extern objc_object* qvsbActivityTypeAirDrop QVSB_SYMBOL(UIActivityTypeAirDrop);
}

namespace qvsb {

inline NSString UIActivityTypePostToFacebook() { return NSString(qvsbActivityTypePostToFacebook); }
inline NSString UIActivityTypePostToTwitter() { return NSString(qvsbActivityTypePostToTwitter); }
inline NSString UIActivityTypePostToWeibo() { return NSString(qvsbActivityTypePostToWeibo); }
inline NSString UIActivityTypeMessage() { return NSString(qvsbActivityTypeMessage); }
inline NSString UIActivityTypeMail() { return NSString(qvsbActivityTypeMail); }
inline NSString UIActivityTypePrint() { return NSString(qvsbActivityTypePrint); }
inline NSString UIActivityTypeCopyToPasteboard() { return NSString(qvsbActivityTypeCopyToPasteboard); }
inline NSString UIActivityTypeAssignToContact() { return NSString(qvsbActivityTypeAssignToContact); }
inline NSString UIActivityTypeSaveToCameraRoll() { return NSString(qvsbActivityTypeSaveToCameraRoll); }
inline NSString UIActivityTypeAddToReadingList() { return NSString(qvsbActivityTypeAddToReadingList); }
inline NSString UIActivityTypePostToFlickr() { return NSString(qvsbActivityTypePostToFlickr); }
inline NSString UIActivityTypePostToVimeo() { return NSString(qvsbActivityTypePostToVimeo); }
inline NSString UIActivityTypePostToTencentWeibo() { return NSString(qvsbActivityTypePostToTencentWeibo); }
inline NSString UIActivityTypeAirDrop() { return NSString(qvsbActivityTypeAirDrop); }

} // namespace qvsb

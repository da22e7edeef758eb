#import "Activities.h"

UIActivityType const UIActivityTypePostToFacebook = @"com.apple.UIKit.activity.PostToFacebook";
UIActivityType const UIActivityTypePostToTwitter = @"com.apple.UIKit.activity.PostToTwitter";
UIActivityType const UIActivityTypePostToWeibo = @"com.apple.UIKit.activity.PostToWeibo";
UIActivityType const UIActivityTypeMessage = @"com.apple.UIKit.activity.Message";
UIActivityType const UIActivityTypeMail = @"com.apple.UIKit.activity.Mail";
UIActivityType const UIActivityTypePrint = @"com.apple.UIKit.activity.Print";
UIActivityType const UIActivityTypeCopyToPasteboard = @"com.apple.UIKit.activity.CopyToPasteboard";
UIActivityType const UIActivityTypeAssignToContact = @"com.apple.UIKit.activity.AssignToContact";
UIActivityType const UIActivityTypeSaveToCameraRoll = @"com.apple.UIKit.activity.SaveToCameraRoll";
UIActivityType const UIActivityTypeAddToReadingList = @"com.apple.UIKit.activity.AddToReadingList";
UIActivityType const UIActivityTypePostToFlickr = @"com.apple.UIKit.activity.PostToFlickr";
UIActivityType const UIActivityTypePostToVimeo = @"com.apple.UIKit.activity.PostToVimeo";
UIActivityType const UIActivityTypePostToTencentWeibo = @"com.apple.UIKit.activity.TencentWeibo";
UIActivityType const UIActivityTypeAirDrop = @"com.apple.UIKit.activity.AirDrop";

@implementation UIActivity

- (void)dealloc {
  [_qvdevice_finished release];
  [super dealloc];
}

- (UIActivityType)activityType {
  return nil;
}

- (NSString *)activityTitle {
  return nil;
}

- (BOOL)canPerformWithActivityItems:(NSArray *)activityItems {
  (void)activityItems;
  return NO;
}

- (void)prepareWithActivityItems:(NSArray *)activityItems {
  (void)activityItems;
}

- (void)performActivity {
}

- (void)activityDidFinish:(BOOL)completed {
  void (^const finished)(BOOL) = [_qvdevice_finished autorelease];
  _qvdevice_finished = nil;
  if (finished) finished(completed);
}

@end

@implementation UIActivity (QVDeviceActivity)

- (void)qvdevice_performWithItems:(NSArray *)items finished:(void (^)(BOOL))finished {
  [_qvdevice_finished release];
  _qvdevice_finished = [finished copy];
  [self prepareWithActivityItems:items];
  [self performActivity];
}

@end

// "screen" answers with a picture of the screen, as PNG in base64, and its size in points. "extension" is, in the same
// form, what the extension that the app shows has drawn of itself; without it, or with null, its place stays grey.
#import "Commands.h"

#import "CommandArguments.h"

#import <QVDevice/QVDevice.h>

#include <cmath>

#include "Screen/Picture.h"

namespace {

// The pictures are looked at on any screen: two pixels a point are sharp on most, and half as much as this phone's own.
constexpr CGFloat kScale = 2;

UIImage *extensionPicture(id text, NSString **problem) {
  if (!text) return nil;
  NSData *const data = [text isKindOfClass:[NSString class]]
                           ? [[[NSData alloc] initWithBase64EncodedString:text options:0] autorelease]
                           : nil;
  UIImage *const image = data ? [UIImage imageWithData:data scale:kScale] : nil;
  if (!image) *problem = @"\"extension\" must be a PNG in base64";
  return image;
}

NSString *answerWithPicture(UIApplication *application, UIImage *extension) {
  @try {
    NSString *problem = nil;
    UIImage *const image = QVDeviceDrawScreen(application, extension, kScale, &problem);
    if (!image) return problem;
    NSData *const png = UIImagePNGRepresentation(image);
    if (!png) return @"there is no memory for the picture";
    QVDeviceAnswer(@{
      @"png" : [png base64EncodedStringWithOptions:0],
      @"width" : [NSNumber numberWithInteger:lround([image size].width)],
      @"height" : [NSNumber numberWithInteger:lround([image size].height)],
      @"scale" : [NSNumber numberWithInteger:lround(kScale)]
    });
    return nil;
  } @catch (NSException *raised) {
    return [NSString
        stringWithFormat:@"the screen cannot be drawn: the app raised %@: %@", [raised name], [raised reason]];
  }
}

NSString *screen(UIApplication *application, NSDictionary *command) {
  if (NSString *const problem = QVDeviceUnexpectedArgument(command, @[ @"extension" ])) return problem;
  NSString *problem = nil;
  UIImage *const extension = extensionPicture(QVDeviceOptionalArgument(command, @"extension"), &problem);
  if (problem) return problem;
  return answerWithPicture(application, extension);
}

} // namespace

void QVDeviceTakeScreenCommand(UIApplication *application) {
  QVDeviceSetControlHandler(@"screen", ^NSString *(NSDictionary *command) {
    return screen(application, command);
  });
}

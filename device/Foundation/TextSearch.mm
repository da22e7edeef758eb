// How text is searched where Debian's Foundation goes wrong: for an expression that is none, which it "finds" at the
// first character with an arbitrary length, and for the empty text, which on the phone is nowhere.

#import <Foundation/Foundation.h>
#import <objc/runtime.h>

#include "runtime/Methods.h"

using qvdevice::asImplementation;
using qvdevice::implementationAs;

namespace {

using InitExpression = id (*)(id, SEL, NSString *, NSRegularExpressionOptions, NSError **);
using RangeOfString = NSRange (*)(id, SEL, NSString *, NSStringCompareOptions);
using PlainRangeOfString = NSRange (*)(id, SEL, NSString *);

InitExpression foundationInitExpression;
RangeOfString foundationRangeOfString;
PlainRangeOfString foundationPlainRangeOfString;

// Foundation's own search asks for the error, and takes an expression without one to be there.
id NSRegularExpression_initWithPattern(id self, SEL selector, NSString *pattern, NSRegularExpressionOptions options,
                                       NSError **error) {
  id const expression = foundationInitExpression(self, selector, pattern, options, error);
  if (!expression && error) {
    *error = [NSError errorWithDomain:NSCocoaErrorDomain code:NSFormattingError
                             userInfo:pattern ? @{@"NSInvalidValue" : pattern} : @{}];
  }
  return expression;
}

NSRange NSString_rangeOfString_options(id self, SEL selector, NSString *text, NSStringCompareOptions options) {
  if (text && [text length] == 0) return NSMakeRange(NSNotFound, 0);
  return foundationRangeOfString(self, selector, text, options);
}

NSRange NSString_rangeOfString(id self, SEL selector, NSString *text) {
  if (text && [text length] == 0) return NSMakeRange(NSNotFound, 0);
  return foundationPlainRangeOfString(self, selector, text);
}

} // namespace

@interface QVDeviceTextSearch : NSObject
@end

@implementation QVDeviceTextSearch

+ (void)load {
  const Method expression =
      class_getInstanceMethod(objc_getClass("NSRegularExpression"), @selector(initWithPattern:options:error:));
  foundationInitExpression = implementationAs<InitExpression>(
      method_setImplementation(expression, asImplementation(NSRegularExpression_initWithPattern)));
  const Method range = class_getInstanceMethod(objc_getClass("NSString"), @selector(rangeOfString:options:));
  foundationRangeOfString = implementationAs<RangeOfString>(
      method_setImplementation(range, asImplementation(NSString_rangeOfString_options)));
  const Method plain = class_getInstanceMethod(objc_getClass("NSString"), @selector(rangeOfString:));
  foundationPlainRangeOfString =
      implementationAs<PlainRangeOfString>(method_setImplementation(plain, asImplementation(NSString_rangeOfString)));
}

@end

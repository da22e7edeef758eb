#import <Zorbel/Zorbel.h>

#import "CallRecord.h"

namespace {

void record(SEL call, NSInteger result, NSString *message) {
  QVDeviceRecordCall(NSStringFromSelector(call), @{
    @"result" : [NSNumber numberWithInteger:result],
    @"message" : QVDeviceOrNull([[message copy] autorelease]),
  });
}

} // namespace

@implementation Zorbel (Acknowledgements)

- (void)authStateApplied:(NSInteger)result message:(NSString *)message {
  record(_cmd, result, message);
}

- (void)configApplied:(NSInteger)result message:(NSString *)message {
  record(_cmd, result, message);
}

- (void)openInPolicyApplied:(NSInteger)result message:(NSString *)message {
  record(_cmd, result, message);
}

- (void)pasteboardPolicyApplied:(NSInteger)result message:(NSString *)message {
  record(_cmd, result, message);
}

- (void)printPolicyApplied:(NSInteger)result message:(NSString *)message {
  record(_cmd, result, message);
}

@end

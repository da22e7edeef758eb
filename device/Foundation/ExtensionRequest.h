// One request that this process makes of an extension, and the process that serves it.
#pragma once

#import <Foundation/NSExtension.h>

/// Lives on a thread of its own from its start until the extension's process has gone. Any thread.
@interface QVDeviceExtensionRequest : NSObject {
@private
  NSUUID *_identifier;
  NSString *_extensionIdentifier;
  NSExtension *_extension; // weak
  struct QVDeviceExtensionState *_state;
}

/// The extension is held weakly: when it has gone, nobody is told anything any more.
- (instancetype)initWithExtension:(NSExtension *)extension;

@property (nonatomic, readonly) NSUUID *identifier;
/// 0 before the process has been started and after it has gone.
@property (nonatomic, readonly) int pid;

/// Starts the process and hands it a message; once.
- (void)startWithMessage:(NSData *)message
       connectionHandler:
           (void (^)(id<NSCopying> requestIdentifier, UIViewController *controller, NSError *error))handler;

/// The process is no longer needed: it ends, and nobody is told.
- (void)end;

@end

// What the stand-in has been asked for: for tests, and for whoever watches the app.

#ifndef ZORBEL_QVDEVICERECORD_H
#define ZORBEL_QVDEVICERECORD_H

#import <Foundation/Foundation.h>

#ifdef __cplusplus
extern "C" {
#endif

/// The calls since the process started, oldest first; log lines, and questions that change nothing, are none. Each is a
/// dictionary: "call" names the selector, the arguments stand under the names below; NSNull stands for nil. A delegate
/// or an event is an NSValue that does not keep it alive.
///
///   initPrivateWithDelegate:version:swizzledMethods:    delegate, version, swizzledMethods
///   setLoggingToFileSuspended:                          suspended
///   setZorbelDelegate:                                  delegate
///   startWithLaunchOptions:                             launchOptions
///   authStateApplied:message: and its four siblings     result, message
///   displayMessage:                                     message
///   willExit
///   sendEvent:                                          event
///   postPasscodeExtensionResult:                        result
NSArray *QVDeviceZorbelRecord(void);

#ifdef __cplusplus
}
#endif

#endif

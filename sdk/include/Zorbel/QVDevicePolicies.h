// Changing what the stand-in answers while the app runs: for tests.

#ifndef ZORBEL_QVDEVICEPOLICIES_H
#define ZORBEL_QVDEVICEPOLICIES_H

#import <Foundation/Foundation.h>

#ifdef __cplusplus
extern "C" {
#endif

/// Puts the values of a JSON object, written as in a policies file, over those that the SDK answers with: each key that
/// it names is replaced whole, the others stay. Nobody is told of the change. What a policies file may not hold raises
/// NSInvalidArgumentException with the reason and changes nothing. Any thread.
void QVDeviceZorbelSetPolicies(NSString *json);

/// The same, and the SDK's delegate is told, as after the command "set" from outside: of all that differs, in the order
/// readiness, authorisation state (with `message`, which may be nil), configuration, managed policy, open-in policy or
/// whitelist, pasteboard policy, print policy. Main thread only; raises NSInternalInconsistencyException on another.
void QVDeviceZorbelChangePolicies(NSString *json, NSString *message);

#ifdef __cplusplus
}
#endif

#endif

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

#ifdef __cplusplus
}
#endif

#endif

// What the stand-in has been asked for: for tests, and for whoever watches the app.

#ifndef ZORBEL_QVDEVICERECORD_H
#define ZORBEL_QVDEVICERECORD_H

#import <Foundation/Foundation.h>

#ifdef __cplusplus
extern "C" {
#endif

/// The calls since the process started, oldest first. Each is a dictionary: "call" names the selector, every argument
/// stands under its own name in the selector; NSNull stands for nil. A delegate is recorded as an NSValue that does not
/// keep it alive.
NSArray *QVDeviceZorbelRecord(void);

#ifdef __cplusplus
}
#endif

#endif

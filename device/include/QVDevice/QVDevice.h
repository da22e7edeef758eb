// What the device offers to those who drive it: traces of what happens, its settings, and commands from outside.

#ifndef QVDEVICE_QVDEVICE_H
#define QVDEVICE_QVDEVICE_H

#import <Foundation/Foundation.h>

#ifdef __cplusplus
extern "C" {
#endif

/// Writes one event to the trace, if somebody listens (QVDEVICE_TRACE_FD). `event` holds "kind" and whatever else
/// belongs to it: strings, numbers, arrays, dictionaries, NSNull. The device adds "t", the milliseconds since the
/// process started.
void QVDeviceTrace(NSDictionary *event);

/// Whether somebody listens to the trace, which does not change while the process runs.
BOOL QVDeviceIsTraced(void);

/// This device's settings: systemVersion, idiom ("phone" or "pad"), defaultProtection (a protection class or "absent"),
/// terminateWithSuccess and persistentDomainNames (booleans: whether the application and the user defaults answer to
/// these), printingAvailable (a boolean: whether there is a printing service). All keys are always there.
NSDictionary *QVDeviceSettings(void);

/// The container's absolute path, without symbolic links.
NSString *QVDeviceContainer(void);

/// Does what a command from outside asks for; called on the main thread. Answers nil when done, otherwise what was
/// wrong.
typedef NSString * (^QVDeviceControlHandler)(NSDictionary *command);

/// Lets the answer to the command that is being handled carry `result`, of strings, numbers, arrays, dictionaries and
/// NSNull. Without effect when the handler then says that something was wrong. Main thread only.
void QVDeviceAnswer(NSDictionary *result);

/// Names the handler of the commands whose "do" is `verb`; nil takes it away. Main thread only.
void QVDeviceSetControlHandler(NSString *verb, QVDeviceControlHandler handler);

#ifdef __cplusplus
}
#endif

#endif

#pragma once

#import <Foundation/Foundation.h>

/// Adds one call to the record and to the device's trace. `arguments` as QVDeviceZorbelRecord gives them back; `traced`
/// are the same ones as a trace can show them.
void QVDeviceRecordCall(NSString *call, NSDictionary *arguments, NSDictionary *traced);
/// The same for arguments that a trace can show as they are.
void QVDeviceRecordCall(NSString *call, NSDictionary *arguments);

/// The object, or what stands for nil in a record.
inline id QVDeviceOrNull(id object) { return object ? object : [NSNull null]; }
/// An object that a record must not keep alive.
inline id QVDeviceUnretained(id object) {
  return object ? [NSValue valueWithNonretainedObject:object] : QVDeviceOrNull(nil);
}
/// The same object for a trace.
inline id QVDeviceClassName(id object) { return object ? NSStringFromClass([object class]) : QVDeviceOrNull(nil); }

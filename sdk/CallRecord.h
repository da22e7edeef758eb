#pragma once

#import <Foundation/Foundation.h>

/// Adds one call to the record and to the device's trace. `arguments` as QVDeviceZorbelRecord gives them back; `traced`
/// are the same ones as a trace can show them.
void QVDeviceRecordCall(NSString *call, NSDictionary *arguments, NSDictionary *traced);

// The SDK's log files beside its own: named, dated, and few.

#ifndef ZORBEL_ZBLOGHELPER_H
#define ZORBEL_ZBLOGHELPER_H

#import <Foundation/Foundation.h>

/// The files lie with the SDK's own log, in Library/Logs/Zorbel of the app's container. Any thread.
@interface ZBLogHelper : NSObject

/// Makes room for one more: of the files whose names bear a date, the newest nine of each name stay. What cannot be
/// removed stays too.
+ (void)rotateLogFiles;

/// `sandbox` becomes `sandbox_2024-05-01T12-00-00.250Z`: names of one kind sort by date. nil when either is nil.
+ (NSString *)appendDate:(NSDate *)date toFileName:(NSString *)name;

/// Makes an empty file `name`.log, or `name`-2.log and so on where that exists, and the folders above it. Its path; nil
/// when it cannot be made, and for a name that is none: nil, empty, with a "/" in it.
+ (NSString *)createLogFileWithName:(NSString *)name;

@end

#endif

// Errors of file operations as the platform words them.
#pragma once

#import <Foundation/Foundation.h>

namespace qvdevice {

// Each stores into `slot`, which may be NULL, and answer NO, so that a failure is one return statement.
BOOL failedWriting(NSError **slot, NSString *path, int posix);
BOOL failedReading(NSError **slot, NSString *path, int posix);
BOOL failedRemoving(NSError **slot, NSString *path, int posix);

// For what has no errno: a scheme that cannot be written, an encoding that cannot hold the text.
BOOL failed(NSError **slot, NSInteger code, NSString *description, NSDictionary *info);

} // namespace qvdevice

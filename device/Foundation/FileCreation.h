// Making folders, for the file manager and for file wrappers.
#pragma once

#import <Foundation/Foundation.h>

namespace qvdevice {

BOOL createFolder(NSString *path, BOOL withIntermediates, NSDictionary *attributes, NSError **error);

BOOL setAttributes(NSDictionary *attributes, NSString *path, NSError **error);

} // namespace qvdevice

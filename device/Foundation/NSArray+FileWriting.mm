#import "PropertyLists.h"
#include "ReplacesFoundation.h"

using namespace qvdevice;

@implementation NSArray (QVDeviceFileWriting)

- (BOOL)writeToFile:(NSString *)path atomically:(BOOL)atomically {
  return writePropertyList(self, path, atomically);
}

- (BOOL)writeToURL:(NSURL *)url atomically:(BOOL)atomically {
  return writePropertyList(self, url, atomically);
}

@end

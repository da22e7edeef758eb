#import "FileWriting.h"
#include "ReplacesFoundation.h"

@implementation NSKeyedArchiver (QVDeviceFileWriting)

+ (BOOL)archiveRootObject:(id)object toFile:(NSString *)path {
  return qvdevice::writeFile([self archivedDataWithRootObject : object], path, { .atomically = true }, NULL);
}

@end

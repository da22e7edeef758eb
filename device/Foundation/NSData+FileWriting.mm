#import "DataProtection.h"
#import "FileErrors.h"
#import "FileWriting.h"
#include "ReplacesFoundation.h"

using namespace qvdevice;

namespace {

Writing writingWith(NSDataWritingOptions options) {
  return {.atomically = (options & NSDataWritingAtomic) != 0,
          .overwriting = (options & NSDataWritingWithoutOverwriting) == 0,
          .protection = protectionInOptions(options)};
}

} // namespace

@implementation NSData (QVDeviceFileWriting)

- (BOOL)writeToFile:(NSString *)path atomically:(BOOL)atomically {
  return writeFile(self, path, {.atomically = atomically != NO}, NULL);
}

- (BOOL)writeToURL:(NSURL *)url atomically:(BOOL)atomically {
  return writeFile(self, url, {.atomically = atomically != NO}, NULL);
}

- (BOOL)writeToFile:(NSString *)path options:(NSUInteger)options error:(NSError **)error {
  return writeFile(self, path, writingWith(options), error);
}

- (BOOL)writeToURL:(NSURL *)url options:(NSUInteger)options error:(NSError **)error {
  return writeFile(self, url, writingWith(options), error);
}

@end

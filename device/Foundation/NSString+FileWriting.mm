#import "FileErrors.h"
#import "FileWriting.h"
#include "ReplacesFoundation.h"

using namespace qvdevice;

namespace {

// Debian's Foundation was compiled by GCC, which writes the number behind NSStringEncoding into a method's type; clang
// would write `int` for the enumeration, and the two would no longer be the same method to those who compare types.
using EncodedNumber = unsigned int;

template <class Target>
BOOL writeText(NSString *text, Target *target, NSString *path, BOOL atomically, NSStringEncoding encoding,
               NSError **error) {
  if (NSData *const data = [text dataUsingEncoding:encoding])
    return writeFile(data, target, {.atomically = atomically != NO}, error);
  NSMutableDictionary *const info = [NSMutableDictionary dictionaryWithObject:@(encoding)
                                                                       forKey:NSStringEncodingErrorKey];
  if (path) [info setObject:path forKey:NSFilePathErrorKey];
  return failed(error, NSFileWriteInapplicableStringEncodingError,
                [NSString stringWithFormat:@"The file “%@” couldn’t be saved using the text encoding %@.",
                                           [path lastPathComponent], [NSString localizedNameOfStringEncoding:encoding]],
                info);
}

} // namespace

@implementation NSString (QVDeviceFileWriting)

- (BOOL)writeToFile:(NSString *)path
         atomically:(BOOL)atomically
           encoding:(EncodedNumber)encoding
              error:(NSError **)error {
  return writeText(self, path, path, atomically, static_cast<NSStringEncoding>(encoding), error);
}

- (BOOL)writeToURL:(NSURL *)url atomically:(BOOL)atomically encoding:(EncodedNumber)encoding error:(NSError **)error {
  return writeText(self, url, [url path], atomically, static_cast<NSStringEncoding>(encoding), error);
}

@end

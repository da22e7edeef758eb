// One KiB written atomically to a path, and what follows the write, in the ways that are compared. An atomic write puts
// a new file into the old one's place, so that each finds an item without a protection class.
#pragma once

#import <Foundation/Foundation.h>

@interface NSData (QVBenchSandbox)
/// The platform's own method once the library is installed.
- (BOOL)sb_writeToFile:(NSString *)path atomically:(BOOL)atomically;
@end

@interface NSFileManager (QVBenchSandbox)
- (void)forceFileProtectionForItemAtPath:(NSString *)path;
- (BOOL)sb_setAttributes:(NSDictionary *)attributes ofItemAtPath:(NSString *)path error:(NSError **)error;
@end

namespace bench {

class Writing {
public:
  /// A file of that name among the app's documents.
  explicit Writing(NSString *name);
  ~Writing();
  Writing(const Writing &) = delete;
  Writing &operator=(const Writing &) = delete;

  NSString *path() const { return path_; }
  const char *cPath() const { return [path_ fileSystemRepresentation]; }

  /// The platform's write and nothing else.
  BOOL alone() const { return [data_ sb_writeToFile:path_ atomically:YES]; }

  /// The write as an app makes it, through the library's hook.
  BOOL hooked() const { return [data_ writeToFile:path_ atomically:YES]; }

  /// The write, and then what the hook does, written by hand with Foundation.
  BOOL byHand() const;
  void raiseByHand() const;

  /// The write, and then the fewest system calls that leave the file with the same class.
  BOOL bare() const;

private:
  NSString *path_;
  NSData *data_;
};

/// Those system calls.
void raiseWithBareCalls(const char *path);

/// The class that is stored with the file; "" when there is none.
NSString *storedClass(const char *path);

} // namespace bench

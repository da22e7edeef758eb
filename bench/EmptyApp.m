// An app that says when it was ready, on the descriptor that it is given, and ends: `EmptyApp DESCRIPTOR`, ready on
// entering main; `EmptyApp DESCRIPTOR used`, ready when it has used Foundation as far as the library does at its start.
#import <Foundation/Foundation.h>

#include "Report.h"

#include <stdlib.h>
#include <string.h>
#include <unistd.h>

/// A class's first message initialises it, and initialising some of Foundation's takes longer than all of the
/// library's own work. Whoever sends that message first pays; here the app does.
static void useFoundation(void) {
  NSAutoreleasePool *const pool = [[NSAutoreleasePool alloc] init];
  NSArray *const names =
      [NSArray arrayWithObjects:@"NSArray", @"NSData", @"NSDictionary", @"NSFileManager", @"NSFileWrapper",
                                @"NSKeyedArchiver", @"NSPersistentStoreCoordinator", @"NSString", @"UIDocument", nil];
  for (NSString *name in names)
    [NSClassFromString(name) class];
  NSString *const documents =
      [NSSearchPathForDirectoriesInDomains(NSDocumentDirectory, NSUserDomainMask, YES) objectAtIndex:0];
  [[NSFileManager defaultManager] fileExistsAtPath:[documents stringByAppendingPathComponent:@"none"]];
  [[NSProcessInfo processInfo] processName];
  [pool drain];
}

int main(int argc, char **argv) {
  if (argc < 2) return 64;
  if (argc > 2 && strcmp(argv[2], "used") == 0) useFoundation();
  struct BenchReport report;
  clock_gettime(CLOCK_MONOTONIC, &report.ready);
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &report.processor);
  return write(atoi(argv[1]), &report, sizeof report) == (ssize_t)sizeof report ? 0 : 1;
}

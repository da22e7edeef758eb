#import "VaultFiles.h"

#include <unistd.h>

enum { depth = 12 };

@implementation VaultFiles

+ (void)write:(NSString *)text toPath:(NSString *)path {
  NSError *error = nil;
  [[NSFileManager defaultManager] createDirectoryAtPath:[path stringByDeletingLastPathComponent]
                            withIntermediateDirectories:YES
                                             attributes:nil
                                                  error:NULL];
  if (![text writeToFile:path atomically:YES encoding:NSUTF8StringEncoding error:&error]) {
    NSLog(@"Could not write %@: %@", [path lastPathComponent], [error localizedDescription]);
  }
}

+ (void)link:(NSString *)path to:(NSString *)destination {
  symlink([destination fileSystemRepresentation], [path fileSystemRepresentation]);
}

+ (void)fill {
  NSString *home = NSHomeDirectory();
  NSString *documents = [home stringByAppendingPathComponent:@"Documents"];
  NSString *shelf = documents;
  for (int i = 1; i <= depth; ++i) {
    shelf = [shelf stringByAppendingPathComponent:[NSString stringWithFormat:@"shelf %d", i]];
    [self write:@"paper" toPath:[shelf stringByAppendingPathComponent:@"paper.txt"]];
  }
  for (NSString *name in [NSArray arrayWithObjects:@"Will.txt", @"Déjà vu — Ω.txt", @"100%@ safe.txt", nil])
    [self write:@"paper" toPath:[documents stringByAppendingPathComponent:name]];
  [self link:[documents stringByAppendingPathComponent:@"to the bundle"] to:[[NSBundle mainBundle] bundlePath]];
  [self link:[documents stringByAppendingPathComponent:@"to the system"] to:@"/etc"];
  [self link:[documents stringByAppendingPathComponent:@"to nowhere"] to:@"/no/such/item"];
  [self write:@"paper" toPath:[home stringByAppendingPathComponent:@"Library/Caches/preview.txt"]];
  [self write:@"paper" toPath:[home stringByAppendingPathComponent:@"Library/Application Support/index.txt"]];
  [self write:@"paper" toPath:[NSTemporaryDirectory() stringByAppendingPathComponent:@"scan.txt"]];
  [self write:@"paper" toPath:[home stringByAppendingPathComponent:@"SystemData/state.txt"]];
}

@end

#import "FailingWrites.h"

#import "NoteFolder.h"

@implementation FailingWrites

- (id)initWithFolder:(NoteFolder *)folder {
  self = [super init];
  if (self) {
    _folder = [folder retain];
  }
  return self;
}

- (void)dealloc {
  [_folder release];
  [super dealloc];
}

- (void)tryAll {
  NSError *error = nil;
  BOOL saved = [@"lost" writeToFile:[_folder pathOf:@"Deleted/lost.txt"] atomically:YES encoding:NSUTF8StringEncoding
                              error:&error];
  [self report:saved name:@"Deleted/lost.txt" because:@"its folder is gone" error:error];

  error = nil;
  NSData *data = [@"archive" dataUsingEncoding:NSUTF8StringEncoding];
  saved = [data writeToFile:[_folder pathOf:@"Archive"] options:0 error:&error];
  [self report:saved name:@"Archive" because:@"there is a folder of that name" error:error];

  error = nil;
  NSURL *url = [NSURL fileURLWithPath:[_folder pathOf:@"groceries.txt/copy.txt"]];
  saved = [@"copy" writeToURL:url atomically:YES encoding:NSUTF8StringEncoding error:&error];
  [self report:saved name:@"groceries.txt/copy.txt" because:@"a note is no folder" error:error];

  saved = [[NSArray array] writeToFile:[_folder pathOf:@"Deleted/titles.plist"] atomically:YES];
  [self report:saved name:@"Deleted/titles.plist" because:@"its folder is gone" error:nil];
}

- (void)report:(BOOL)saved name:(NSString *)name because:(NSString *)reason error:(NSError *)error {
  if (saved) {
    NSLog(@"Saved %@ although %@.", name, reason);
  } else if (error) {
    NSLog(@"Could not save %@ (%@): %@ [%@ %ld]", name, reason, [error localizedDescription], [error domain],
          (long)[error code]);
  } else {
    NSLog(@"Could not save %@ (%@).", name, reason);
  }
}

@end

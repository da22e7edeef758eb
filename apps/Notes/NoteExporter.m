#import "NoteExporter.h"

#import "Note.h"

@implementation NoteExporter

- (void)exportNotes:(NSArray *)notes {
  NSFileManager *manager = [[[NSFileManager alloc] init] autorelease];
  NSString *caches = [NSSearchPathForDirectoriesInDomains(NSCachesDirectory, NSUserDomainMask, YES) objectAtIndex:0];
  NSURL *folder = [NSURL fileURLWithPath:[caches stringByAppendingPathComponent:@"Export"] isDirectory:YES];
  NSError *error = nil;
  if (![manager createDirectoryAtURL:folder withIntermediateDirectories:YES attributes:nil error:&error]) {
    NSLog(@"Could not export: %@", [error localizedDescription]);
    return;
  }
  for (Note *note in notes) {
    NSURL *url = [folder URLByAppendingPathComponent:[note.fileName stringByAppendingPathExtension:@"txt"]];
    if (![note.body writeToURL:url atomically:NO encoding:NSUTF8StringEncoding error:&error]) {
      NSLog(@"Could not export %@: %@", note.title, [error localizedDescription]);
      return;
    }
  }
  NSFileWrapper *wrapper = [[[NSFileWrapper alloc]
      initRegularFileWithContents:[[[notes lastObject] body] dataUsingEncoding:NSUTF8StringEncoding]] autorelease];
  NSURL *latest = [folder URLByAppendingPathComponent:@"latest"];
  if (![wrapper writeToURL:latest options:NSFileWrapperWritingAtomic originalContentsURL:nil error:&error]) {
    NSLog(@"Could not export the latest note: %@", [error localizedDescription]);
    return;
  }
  NSLog(@"Exported %lu notes in the background.", (unsigned long)[notes count]);
}

@end

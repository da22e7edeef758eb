#import "NoteFolder.h"

#import <UIKit/UIKit.h>

#import "Note.h"

@implementation NoteFolder

@synthesize path = _path;

- (id)initWithPath:(NSString *)path {
  self = [super init];
  if (self) {
    _path = [path copy];
  }
  return self;
}

- (void)dealloc {
  [_path release];
  [super dealloc];
}

- (NSString *)pathOf:(NSString *)name {
  return [_path stringByAppendingPathComponent:name];
}

- (void)report:(BOOL)saved what:(NSString *)what name:(NSString *)name error:(NSError *)error {
  if (saved) {
    NSLog(@"Saved %@ as %@.", what, name);
  } else {
    NSLog(@"Could not save %@ as %@: %@", what, name, [error localizedDescription]);
  }
}

#pragma mark - Notes

- (void)saveText:(Note *)note {
  NSError *error = nil;
  NSString *name = [note.fileName stringByAppendingPathExtension:@"txt"];
  BOOL saved = [note.body writeToFile:[self pathOf:name] atomically:YES encoding:NSUTF8StringEncoding error:&error];
  [self report:saved what:@"a text" name:name error:error];
}

- (void)savePlainData:(Note *)note {
  NSString *name = [note.fileName stringByAppendingPathExtension:@"data"];
  BOOL saved = [note.data writeToURL:[NSURL fileURLWithPath:[self pathOf:name]] atomically:YES];
  [self report:saved what:@"a note's data" name:name error:nil];
}

- (void)saveUnprotectedData:(Note *)note {
  NSError *error = nil;
  NSString *name = [note.fileName stringByAppendingString:@"-widget.data"];
  BOOL saved = [note.data writeToFile:[self pathOf:name] options:NSDataWritingAtomic | NSDataWritingFileProtectionNone
                                error:&error];
  [self report:saved what:@"data for the widget, asking for no protection," name:name error:error];
}

- (void)savePrivate:(Note *)note {
  NSError *error = nil;
  NSString *name = [note.fileName stringByAppendingPathExtension:@"private"];
  BOOL saved = [note.data writeToFile:[self pathOf:name]
                              options:NSDataWritingAtomic | NSDataWritingFileProtectionComplete
                                error:&error];
  [self report:saved what:@"a private note, asking for complete protection," name:name error:error];
}

- (void)savePropertyList:(Note *)note {
  NSString *name = [note.fileName stringByAppendingPathExtension:@"plist"];
  [self report:[note.propertyList writeToFile:[self pathOf:name] atomically:YES] what:@"a property list" name:name
         error:nil];
}

- (void)saveTitles:(NSArray *)notes {
  NSURL *url = [NSURL fileURLWithPath:[self pathOf:@"titles.plist"]];
  [self report:[[notes valueForKey:@"title"] writeToURL:url atomically:YES] what:@"the list of titles"
          name:@"titles.plist"
         error:nil];
}

- (void)saveArchive:(NSArray *)notes {
  [self report:[NSKeyedArchiver archiveRootObject:notes toFile:[self pathOf:@"notes.archive"]] what:@"all notes"
          name:@"notes.archive"
         error:nil];
}

- (void)saveStateWithOpenNote:(NSString *)title {
  NSDictionary *state = [NSDictionary dictionaryWithObjectsAndKeys:title, @"openNote", nil];
  [self report:[state writeToFile:[self pathOf:@"state.plist"] atomically:YES] what:@"what was on the screen"
          name:@"state.plist"
         error:nil];
}

#pragma mark - Folders and attributes

- (void)createArchiveFoldersForYear:(NSString *)year month:(NSString *)month {
  NSError *error = nil;
  NSString *name = [NSString pathWithComponents:[NSArray arrayWithObjects:@"Archive", year, month, nil]];
  BOOL created = [[NSFileManager defaultManager] createDirectoryAtPath:[self pathOf:name]
                                           withIntermediateDirectories:YES
                                                            attributes:nil
                                                                 error:&error];
  if (created) {
    NSLog(@"Created the folder %@.", name);
  } else {
    NSLog(@"Could not create the folder %@: %@", name, [error localizedDescription]);
  }
}

- (void)createAttachmentNamed:(NSString *)name {
  const unsigned char start[] = {0xff, 0xd8, 0xff, 0xe0};
  BOOL created = [[NSFileManager defaultManager] createFileAtPath:[self pathOf:name]
                                                         contents:[NSData dataWithBytes:start length:sizeof start]
                                                       attributes:nil];
  [self report:created what:@"an attachment" name:name error:nil];
}

- (void)makePublic:(Note *)note {
  NSError *error = nil;
  NSString *name = [note.fileName stringByAppendingPathExtension:@"txt"];
  NSDictionary *attributes = [NSDictionary dictionaryWithObject:NSFileProtectionNone forKey:NSFileProtectionKey];
  if ([[NSFileManager defaultManager] setAttributes:attributes ofItemAtPath:[self pathOf:name] error:&error]) {
    NSLog(@"Set the protection of %@ to none.", name);
  } else {
    NSLog(@"Could not set the protection of %@: %@", name, [error localizedDescription]);
  }
}

@end

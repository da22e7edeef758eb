#import "AppDelegate.h"

#import "FailingWrites.h"
#import "Note.h"
#import "NoteCatalog.h"
#import "NoteDocument.h"
#import "NoteExporter.h"
#import "NoteFolder.h"
#import "NotesViewController.h"

@implementation AppDelegate

@synthesize window = _window;

- (void)dealloc {
  [_window release];
  [_folder release];
  [_catalog release];
  [_openDocuments release];
  [super dealloc];
}

- (BOOL)application:(UIApplication *)application didFinishLaunchingWithOptions:(NSDictionary *)launchOptions {
  NSString *documents =
      [NSSearchPathForDirectoriesInDomains(NSDocumentDirectory, NSUserDomainMask, YES) objectAtIndex:0];
  _folder = [[NoteFolder alloc] initWithPath:documents];
  _catalog = [[NoteCatalog alloc] initWithFolder:documents];
  _openDocuments = [[NSMutableArray alloc] init];

  NotesViewController *controller = [[[NotesViewController alloc] initWithNotes:[Note samples]
                                                                         folder:documents] autorelease];
  self.window = [[[UIWindow alloc] initWithFrame:[[UIScreen mainScreen] bounds]] autorelease];
  self.window.rootViewController = controller;
  [self.window makeKeyAndVisible];

  [self saveNotes:[Note samples]];
  [self saveDocuments];
  return YES;
}

- (void)applicationDidBecomeActive:(UIApplication *)application {
  // What takes long, or may fail, is not done while the user waits for the app to start.
  dispatch_async(dispatch_get_global_queue(DISPATCH_QUEUE_PRIORITY_DEFAULT, 0), ^{
    [[[[NoteExporter alloc] init] autorelease] exportNotes:[Note samples]];
    dispatch_async(dispatch_get_main_queue(), ^{
      [[[[FailingWrites alloc] initWithFolder:_folder] autorelease] tryAll];
    });
  });
}

- (void)applicationDidEnterBackground:(UIApplication *)application {
  [_folder saveStateWithOpenNote:@"Groceries"];
}

- (void)applicationWillTerminate:(UIApplication *)application {
  NSLog(@"Good-bye.");
}

#pragma mark - Saving

- (void)saveNotes:(NSArray *)notes {
  Note *groceries = [notes objectAtIndex:0];
  Note *holidays = [notes objectAtIndex:1];
  Note *diary = [notes objectAtIndex:2];

  [_folder saveText:groceries];
  [_folder savePlainData:holidays];
  [_folder saveUnprotectedData:holidays];
  [_folder savePrivate:diary];
  [_folder savePropertyList:groceries];
  [_folder saveTitles:notes];
  [_folder saveArchive:notes];
  [_folder createArchiveFoldersForYear:@"2014" month:@"05"];
  [_folder createAttachmentNamed:@"receipt.jpg"];
  [_folder makePublic:groceries];
  [_catalog open];
}

- (void)saveDocuments {
  NSURL *folder = [NSURL fileURLWithPath:_folder.path isDirectory:YES];
  NoteDocument *letter = [NoteDocument documentNamed:@"Letter.note" inFolder:folder];
  letter.text = @"Dear Ann,\n\nthe photographs are in the other note.\n";
  NoteDocument *album = [NoteDocument documentNamed:@"Album.notebook" inFolder:folder];
  album.text = @"Photographs of the summer\n";
  for (NoteDocument *document in [NSArray arrayWithObjects:letter, album, nil]) {
    [_openDocuments addObject:document];
    [document saveToURL:document.fileURL forSaveOperation:UIDocumentSaveForCreating completionHandler:^(BOOL success) {
      NSLog(success ? @"Saved the document %@." : @"Could not save the document %@.",
            [document.fileURL lastPathComponent]);
    }];
  }
}

@end

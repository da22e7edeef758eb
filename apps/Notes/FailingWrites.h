#import <Foundation/Foundation.h>

@class NoteFolder;

/// What goes wrong for users of this app, again and again: each is tried, and told as the user would read it.
@interface FailingWrites : NSObject {
  NoteFolder *_folder;
}

- (id)initWithFolder:(NoteFolder *)folder;
- (void)tryAll;

@end

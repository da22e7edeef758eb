#import <UIKit/UIKit.h>

/// A note as a document of its own: a file, or a notebook, which is a folder with its text and pictures.
@interface NoteDocument : UIDocument {
  NSString *_text;
}

@property (nonatomic, copy) NSString *text;

+ (NoteDocument *)documentNamed:(NSString *)name inFolder:(NSURL *)folder;

@end

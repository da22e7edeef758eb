#import <UIKit/UIKit.h>

/// Shows the notes; the first can be edited, shared, opened in another app and printed.
@interface NotesViewController : UIViewController {
  NSArray *_notes;
  UITextField *_text;
  NSString *_folder;
  UIDocumentInteractionController *_openIn;
}

/// `folder` is where the notes' files are.
- (id)initWithNotes:(NSArray *)notes folder:(NSString *)folder;

@end

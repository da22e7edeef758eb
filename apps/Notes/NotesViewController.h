#import <UIKit/UIKit.h>

@interface NotesViewController : UIViewController {
  NSArray *_notes;
}

- (id)initWithNotes:(NSArray *)notes;

@end

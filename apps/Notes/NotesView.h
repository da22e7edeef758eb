#import <UIKit/UIKit.h>

@class CardView;

/// The screen of this app: the notes, the one that is open, and what can be done with it.
@interface NotesView : UIView {
  UILabel *_title;
  CardView *_list;
  NSUInteger _count;
  UIView *_page;
  UITextField *_textField;
  UILabel *_body;
  UILabel *_status;
  UIView *_bar;
}

/// The title of the open note.
@property (nonatomic, readonly) UITextField *textField;

- (id)initWithFrame:(CGRect)frame notes:(NSArray *)notes;

/// Shows the text of a note below its title.
- (void)setBody:(NSString *)body;
/// Tells the user what has become of the last thing that was done.
- (void)setStatus:(NSString *)status;
- (void)addButton:(NSString *)title target:(id)target action:(SEL)action;

@end

#import <UIKit/UIKit.h>

/// A whole screen: a large title, and rows on a card below it.
@interface ListView : UIView

+ (ListView *)viewWithTitle:(NSString *)title rows:(NSArray *)rows;

/// Arrays of a title and, if it has one, a detail.
- (void)setRows:(NSArray *)rows;

@end

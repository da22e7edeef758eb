#import <UIKit/UIKit.h>

/// Rows on a white card: a title each, and a detail below it.
@interface CardView : UIView

/// `rows`: arrays of a title and, if it has one, a detail.
- (void)setRows:(NSArray *)rows;

/// How high a card with so many rows is.
+ (CGFloat)heightOfRows:(NSUInteger)count;

@end

/// What the sample apps write on their screens.
@interface UILabel (Sample)
+ (UILabel *)labelWithText:(NSString *)text size:(CGFloat)size weight:(UIFontWeight)weight;
/// Less than the others.
- (void)stepBack;
@end

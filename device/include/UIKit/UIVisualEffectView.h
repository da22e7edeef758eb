#pragma once

#import <UIKit/UIView.h>

/// What is done to the picture of all that lies behind a view.
@interface UIVisualEffect : NSObject <NSCopying>
@end

typedef NS_ENUM(NSInteger, UIBlurEffectStyle) {
  UIBlurEffectStyleExtraLight,
  UIBlurEffectStyleLight,
  UIBlurEffectStyleDark,
};

/// Two of one style are equal.
@interface UIBlurEffect : UIVisualEffect {
@private
  UIBlurEffectStyle _style;
}

+ (UIBlurEffect *)effectWithStyle:(UIBlurEffectStyle)style;

@end

/// What lies behind it is blurred in pictures of the screen.
@interface UIVisualEffectView : UIView {
@private
  UIVisualEffect *_effect;
  UIView *_contentView;
}

- (instancetype)initWithEffect:(UIVisualEffect *)effect;

@property (nonatomic, copy) UIVisualEffect *effect;
/// Where subviews go.
@property (nonatomic, readonly) UIView *contentView;

@end

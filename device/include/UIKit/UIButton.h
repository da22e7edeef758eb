#pragma once

#import <UIKit/UIControl.h>

@class UIColor, UILabel;

typedef NS_ENUM(NSInteger, UIButtonType) {
  UIButtonTypeCustom = 0,
  UIButtonTypeSystem,
};

@interface UIButton : UIControl {
@private
  NSMutableDictionary *_titles;
  NSMutableDictionary *_titleColors;
  UILabel *_titleLabel;
  UIButtonType _buttonType;
}

+ (instancetype)buttonWithType:(UIButtonType)type;

@property (nonatomic, readonly) UIButtonType buttonType;
@property (nonatomic, readonly) UILabel *titleLabel;
@property (nonatomic, readonly) NSString *currentTitle;

- (void)setTitle:(NSString *)title forState:(UIControlState)state;
/// A state without a title of its own has that of the normal state.
- (NSString *)titleForState:(UIControlState)state;
- (void)setTitleColor:(UIColor *)color forState:(UIControlState)state;
/// Like a title; nil where none was set, and the button's type decides.
- (UIColor *)titleColorForState:(UIControlState)state;

@end

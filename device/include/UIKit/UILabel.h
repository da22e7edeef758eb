#pragma once

#import <UIKit/UIFont.h>
#import <UIKit/UIView.h>

typedef NS_ENUM(NSInteger, NSTextAlignment) {
  NSTextAlignmentLeft = 0,
  NSTextAlignmentCenter = 1,
  NSTextAlignmentRight = 2,
  NSTextAlignmentNatural = 4,
};

@interface UILabel : UIView {
@private
  NSString *_text;
  UIFont *_font;
  UIColor *_textColor;
  NSTextAlignment _textAlignment;
  NSInteger _numberOfLines;
}

@property (nonatomic, copy) NSString *text;
/// The system's of 17 points, and black, unless set; nil sets them back.
@property (nonatomic, retain) UIFont *font;
@property (nonatomic, retain) UIColor *textColor;
@property (nonatomic) NSTextAlignment textAlignment;
/// 1 unless set; 0 for as many as there is room for.
@property (nonatomic) NSInteger numberOfLines;

@end

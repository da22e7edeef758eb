#pragma once

#import <UIKit/UIView.h>

@interface UILabel : UIView {
@private
  NSString *_text;
}

@property (nonatomic, copy) NSString *text;

@end

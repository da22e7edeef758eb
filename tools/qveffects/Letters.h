#pragma once

#import <UIKit/UIKit.h>

/// Writes small letters, digits and blanks into the current context: 5 by 7 dots, each `dot` points wide, a column of
/// them between two letters. Other characters are blanks.
void drawText(const char *text, CGPoint at, CGFloat dot);
/// How wide that is.
CGFloat widthOfText(const char *text, CGFloat dot);

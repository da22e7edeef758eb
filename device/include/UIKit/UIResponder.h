#pragma once

#import <Foundation/Foundation.h>
#import <UIKit/UIKitDefines.h>

@class UIEvent, UITextInputMode;

@interface UIResponder : NSObject

@property (nonatomic, readonly) UIResponder *nextResponder;
@property (nonatomic, readonly) BOOL canBecomeFirstResponder;
@property (nonatomic, readonly) BOOL canResignFirstResponder;
@property (nonatomic, readonly) BOOL isFirstResponder;

- (BOOL)becomeFirstResponder;
- (BOOL)resignFirstResponder;

- (void)touchesBegan:(NSSet *)touches withEvent:(UIEvent *)event;
- (void)touchesMoved:(NSSet *)touches withEvent:(UIEvent *)event;
- (void)touchesEnded:(NSSet *)touches withEvent:(UIEvent *)event;
- (void)touchesCancelled:(NSSet *)touches withEvent:(UIEvent *)event;

- (BOOL)canPerformAction:(SEL)action withSender:(id)sender;
- (id)targetForAction:(SEL)action withSender:(id)sender;

@end

@interface UIResponder (UIResponderInputViewAdditions)
/// The way in which text is entered at the moment.
@property (nonatomic, readonly) UITextInputMode *textInputMode;
@end

#pragma once

#import <Foundation/Foundation.h>
#import <UIKit/UIKitDefines.h>

/// What a responder must answer to be written into.
@protocol UIKeyInput <NSObject>
@property (nonatomic, readonly) BOOL hasText;
- (void)insertText:(NSString *)text;
- (void)deleteBackward;
@end

/// A way of entering text: a keyboard of some language, or dictation.
@interface UITextInputMode : NSObject {
@private
  NSString *_primaryLanguage;
}

/// The language's tag, as in "en-US"; "dictation" for dictation.
@property (nonatomic, readonly) NSString *primaryLanguage;

+ (UITextInputMode *)currentInputMode;
+ (NSArray *)activeInputModes;

@end

/// Posted on the main thread after the user has changed the way in which text is entered.
UIKIT_EXTERN NSNotificationName const UITextInputCurrentInputModeDidChangeNotification;

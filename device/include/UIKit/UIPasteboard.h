#pragma once

#import <Foundation/Foundation.h>
#import <UIKit/UIKitDefines.h>

@interface UIPasteboard : NSObject {
@private
  NSArray *_items;
}

+ (UIPasteboard *)generalPasteboard;

/// Items, each a dictionary from type to value.
@property (nonatomic, copy) NSArray *items;

@end

UIKIT_EXTERN NSNotificationName const UIPasteboardChangedNotification;

// In place of Debian's, which neither copies nor archives.
#pragma once

#define _NSExtensionItem_h_GNUSTEP_BASE_INCLUDE

#import <Foundation/NSObject.h>

@class NSArray, NSAttributedString, NSDictionary, NSString;

// Keys of the same in dictionaries.
GS_EXPORT NSString *const NSExtensionItemAttributedTitleKey;
GS_EXPORT NSString *const NSExtensionItemAttributedContentTextKey;
GS_EXPORT NSString *const NSExtensionItemAttachmentsKey;

/// What a host gives an extension, and an extension its host.
@interface NSExtensionItem : NSObject <NSCopying, NSSecureCoding> {
@private
  NSAttributedString *_attributedTitle;
  NSAttributedString *_attributedContentText;
  NSArray *_attachments;
  NSDictionary *_userInfo;
}

@property (nonatomic, copy) NSAttributedString *attributedTitle;
@property (nonatomic, copy) NSAttributedString *attributedContentText;
/// Of NSItemProvider.
@property (nonatomic, copy) NSArray *attachments;
@property (nonatomic, copy) NSDictionary *userInfo;

@end

#import <Foundation/Foundation.h>

#include "ReplacesFoundation.h"

namespace {

/// What is archived under a key, or nil; raises when that is of another class.
id decoded(NSCoder *coder, NSString *key, Class expected) {
  id const object = [coder decodeObjectForKey:key];
  if (object && ![object isKindOfClass:expected])
    [NSException raise:NSInvalidUnarchiveOperationException
                format:@"%@ of an extension item is a %@", key, [object class]];
  return object;
}

} // namespace

@interface NSExtensionItem (QVDevice) <NSCopying, NSSecureCoding>
@end

@implementation NSExtensionItem (QVDevice)

+ (BOOL)supportsSecureCoding {
  return YES;
}

- (void)dealloc {
  [_attributedTitle release];
  [_attributedContentText release];
  [_attachments release];
  [_userInfo release];
  [super dealloc];
}

- (NSAttributedString *)attributedTitle {
  return _attributedTitle;
}

- (void)setAttributedTitle:(NSAttributedString *)title {
  NSAttributedString *const copy = [title copy];
  [_attributedTitle release];
  _attributedTitle = copy;
}

- (NSAttributedString *)attributedContentText {
  return _attributedContentText;
}

- (void)setAttributedContentText:(NSAttributedString *)text {
  NSAttributedString *const copy = [text copy];
  [_attributedContentText release];
  _attributedContentText = copy;
}

- (NSArray *)attachments {
  return _attachments;
}

- (void)setAttachments:(NSArray *)attachments {
  NSArray *const copy = [attachments copy];
  [_attachments release];
  _attachments = copy;
}

- (NSDictionary *)userInfo {
  return _userInfo;
}

- (void)setUserInfo:(NSDictionary *)userInfo {
  NSDictionary *const copy = [userInfo copy];
  [_userInfo release];
  _userInfo = copy;
}

- (id)copyWithZone:(NSZone *)zone {
  NSExtensionItem *const copy = [[[self class] allocWithZone:zone] init];
  [copy setAttributedTitle:_attributedTitle];
  [copy setAttributedContentText:_attributedContentText];
  [copy setAttachments:_attachments];
  [copy setUserInfo:_userInfo];
  return copy;
}

- (void)encodeWithCoder:(NSCoder *)coder {
  [coder encodeObject:_attributedTitle forKey:@"attributedTitle"];
  [coder encodeObject:_attributedContentText forKey:@"attributedContentText"];
  [coder encodeObject:_attachments forKey:@"attachments"];
  [coder encodeObject:_userInfo forKey:@"userInfo"];
}

- (id)initWithCoder:(NSCoder *)coder {
  if ((self = [super init])) {
    [self setAttributedTitle:decoded(coder, @"attributedTitle", [NSAttributedString class])];
    [self setAttributedContentText:decoded(coder, @"attributedContentText", [NSAttributedString class])];
    [self setAttachments:decoded(coder, @"attachments", [NSArray class])];
    [self setUserInfo:decoded(coder, @"userInfo", [NSDictionary class])];
    for (id each in _attachments)
      if (![each isKindOfClass:[NSItemProvider class]])
        [NSException raise:NSInvalidUnarchiveOperationException
                    format:@"an attachment of an extension item is a %@", [each class]];
  }
  return self;
}

@end

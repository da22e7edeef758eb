#import <Foundation/Foundation.h>
#import <dispatch/dispatch.h>

#include "ReplacesFoundation.h"

/// What every item provider is: Debian's class has no room for a state.
@interface QVDeviceItemProvider : NSItemProvider {
  id _item;
  NSString *_typeIdentifier;
}
@end

namespace {

NSError *unavailable(NSString *typeIdentifier) {
  NSString *const reason =
      [NSString stringWithFormat:@"Cannot load representation of type %@", typeIdentifier ? typeIdentifier : @"(null)"];
  return [NSError errorWithDomain:NSItemProviderErrorDomain code:NSItemProviderItemUnavailableError
                         userInfo:@{NSLocalizedDescriptionKey : reason}];
}

} // namespace

@interface NSItemProvider (QVDevice) <NSCopying, NSSecureCoding>
@end

@implementation NSItemProvider (QVDevice)

+ (id)allocWithZone:(NSZone *)zone {
  if (self == [NSItemProvider class]) return [QVDeviceItemProvider allocWithZone:zone];
  return [super allocWithZone:zone];
}

+ (BOOL)supportsSecureCoding {
  return YES;
}

// Debian's answers nil.
- (instancetype)init {
  return [super init];
}

@end

@implementation QVDeviceItemProvider

- (instancetype)initWithItem:(id)item typeIdentifier:(NSString *)typeIdentifier {
  if (!typeIdentifier) {
    [self release];
    [NSException raise:NSInvalidArgumentException
                format:@"-[NSItemProvider initWithItem:typeIdentifier:]: the type identifier is nil"];
  }
  if ((self = [super init])) {
    _item = [item retain];
    _typeIdentifier = [typeIdentifier copy];
  }
  return self;
}

- (void)dealloc {
  [_item release];
  [_typeIdentifier release];
  [super dealloc];
}

- (NSArray *)registeredTypeIdentifiers {
  return _item ? @[ _typeIdentifier ] : @[];
}

- (BOOL)hasItemConformingToTypeIdentifier:(NSString *)typeIdentifier {
  return _item && typeIdentifier && [_typeIdentifier caseInsensitiveCompare:typeIdentifier] == NSOrderedSame;
}

- (void)loadItemForTypeIdentifier:(NSString *)typeIdentifier
                          options:(NSDictionary *)options
                completionHandler:(NSItemProviderCompletionHandler)completionHandler {
  (void)options;
  if (!completionHandler) return;
  const BOOL has = [self hasItemConformingToTypeIdentifier:typeIdentifier];
  id const item = has ? _item : nil;
  NSError *const error = has ? nil : unavailable(typeIdentifier);
  dispatch_async(dispatch_get_global_queue(DISPATCH_QUEUE_PRIORITY_DEFAULT, 0), ^{
    completionHandler(item, error);
  });
}

- (id)copyWithZone:(NSZone *)zone {
  (void)zone;
  return [self retain];
}

- (Class)classForCoder {
  return [NSItemProvider class];
}

- (Class)classForKeyedArchiver {
  return [NSItemProvider class];
}

- (void)encodeWithCoder:(NSCoder *)coder {
  [coder encodeObject:_item forKey:@"item"];
  [coder encodeObject:_typeIdentifier forKey:@"typeIdentifier"];
}

- (id)initWithCoder:(NSCoder *)coder {
  id const typeIdentifier = [coder decodeObjectForKey:@"typeIdentifier"];
  if (![typeIdentifier isKindOfClass:[NSString class]])
    [NSException raise:NSInvalidUnarchiveOperationException
                format:@"the type of an item provider is a %@", [typeIdentifier class]];
  return [self initWithItem:[coder decodeObjectForKey:@"item"] typeIdentifier:typeIdentifier];
}

@end

// In place of Debian's, whose class of that name does nothing and whose blocks have other types than the phone's.
#pragma once

#define _NSItemProvider_h_GNUSTEP_BASE_INCLUDE

#import <Foundation/NSObject.h>

@class NSArray, NSDictionary, NSError, NSString;

// Where the phone says id<NSSecureCoding>: Debian's dictionaries, strings and data do not say that they are that.
typedef void (^NSItemProviderCompletionHandler)(id item, NSError *error);

GS_EXPORT NSString *const NSItemProviderErrorDomain;

typedef NSInteger NSItemProviderErrorCode;
enum : NSInteger {
  NSItemProviderUnknownError = -1,
  NSItemProviderItemUnavailableError = -1000,
  NSItemProviderUnexpectedValueClassError = -1100,
  NSItemProviderUnavailableCoercionError = -1200,
};

/// An item that one process hands to another, under one type identifier. The item goes with its provider when that is
/// archived.
@interface NSItemProvider : NSObject <NSCopying, NSSecureCoding>

/// Without an item there is nothing registered. Raises NSInvalidArgumentException without a type identifier.
- (instancetype)initWithItem:(id)item typeIdentifier:(NSString *)typeIdentifier;

- (NSArray *)registeredTypeIdentifiers;

/// Type identifiers are compared without regard to case. The device knows no types that conform to others.
- (BOOL)hasItemConformingToTypeIdentifier:(NSString *)typeIdentifier;

/// Calls the handler once, on a thread that is not the caller's: with the item, or with an error of
/// NSItemProviderErrorDomain. The options are not looked at.
- (void)loadItemForTypeIdentifier:(NSString *)typeIdentifier
                          options:(NSDictionary *)options
                completionHandler:(NSItemProviderCompletionHandler)completionHandler;

@end

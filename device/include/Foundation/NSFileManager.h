#pragma once

#include_next <Foundation/NSFileManager.h>

#import <Foundation/NSPathUtilities.h>

@class NSArray, NSError, NSString;

typedef NSString *NSFileAttributeKey;
typedef NSString *NSFileProtectionType;

// Each constant's value equals its name.
GS_EXPORT NSFileAttributeKey const NSFileProtectionKey;
GS_EXPORT NSFileProtectionType const NSFileProtectionNone;
GS_EXPORT NSFileProtectionType const NSFileProtectionComplete;
GS_EXPORT NSFileProtectionType const NSFileProtectionCompleteUnlessOpen;
GS_EXPORT NSFileProtectionType const NSFileProtectionCompleteUntilFirstUserAuthentication;

@interface NSFileManager (NSAttributes)
- (BOOL)setAttributes:(NSDictionary *)attributes ofItemAtPath:(NSString *)path error:(NSError **)error;
@end

@interface NSFileManager (QVDeviceListing)
- (NSString *)destinationOfSymbolicLinkAtPath:(NSString *)path error:(NSError **)error;
@end

@interface NSFileManager (QVDeviceDirectories)
- (NSArray *)URLsForDirectory:(NSSearchPathDirectory)directory inDomains:(NSSearchPathDomainMask)domainMask;
@end

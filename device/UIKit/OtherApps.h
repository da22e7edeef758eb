// The device's other apps, as far as an app has to do with them: who they are and what they can be handed.
//
// An app is known by a folder `Apps/IDENTIFIER` of the device's, with an Info.plist in it. CFBundleDocumentTypes there
// makes it an app that opens documents; an `PlugIns/NAME.appex/Info.plist` whose NSExtension has the extension point
// com.apple.share-services is a share extension of it. What it is handed lies in its `Documents/Inbox`.
#pragma once

#import <Foundation/Foundation.h>

/// What the platform's lists of apps consist of.
@interface LSApplicationProxy : NSObject {
@private
  NSString *_applicationIdentifier;
  NSString *_localizedName;
}

@property (nonatomic, readonly) NSString *applicationIdentifier;
@property (nonatomic, readonly) NSString *localizedName;

@end

/// One of another app's extensions that takes what is shared.
@interface QVDeviceShareExtension : NSObject {
@private
  NSString *_identifier;
  NSString *_localizedName;
  NSString *_applicationIdentifier;
}

@property (nonatomic, readonly) NSString *identifier;
@property (nonatomic, readonly) NSString *localizedName;
/// The app's that it belongs to.
@property (nonatomic, readonly) NSString *applicationIdentifier;

@end

/// The other apps that open documents (LSApplicationProxy), and the share extensions, each in the order of their
/// identifiers. New mutable arrays.
NSMutableArray *QVDeviceAppsThatOpenDocuments(void);
NSMutableArray *QVDeviceShareExtensions(void);

// The platform's own interface for hosts of extensions; no app's.
#pragma once

#import <Foundation/Foundation.h>

@class UIViewController;

/// An extension of an installed app, and the requests that this process makes of it. Each request runs the extension in
/// a process of its own, which ends when the request's view controller or this object goes.
@interface NSExtension : NSObject {
@private
  NSString *_identifier;
  NSDictionary *_attributes;
  void (^_requestInterruptionBlock)(id<NSCopying>);
  void (^_requestCancellationBlock)(id, NSError *);
  void (^_requestCompletionBlock)(id, NSArray *);
  NSMutableDictionary *_requests;
}

/// The extension with that bundle identifier in the plug-ins of the device's installed apps; nil and an error of
/// NSExtensionErrorDomain when there is none.
+ (instancetype)extensionWithIdentifier:(NSString *)identifier error:(NSError **)error;

@property (nonatomic, readonly) NSString *identifier;
/// What the extension's information says under NSExtension.
@property (nonatomic, readonly) NSDictionary *attributes;

// How a request ends. One of the three is called, once, on a thread of the system's; none after this object has gone.

/// The extension's process has gone, or said something that nobody understands.
@property (atomic, copy) void (^requestInterruptionBlock)(id<NSCopying> requestIdentifier);
@property (atomic, copy) void (^requestCancellationBlock)(id requestIdentifier, NSError *error);
@property (atomic, copy) void (^requestCompletionBlock)(id requestIdentifier, NSArray *returnedItems);

/// Starts the extension with NSExtensionItem objects. The handler is called once: on the main thread with what stands
/// for the extension's view controller in this process, or on a thread of the system's with an error; either when the
/// main thread's turn in which this is called is over, so that a host may show what it asks from. It is not called
/// after this object has gone.
- (void)instantiateViewControllerWithInputItems:(NSArray *)inputItems
                              connectionHandler:(void (^)(id<NSCopying> requestIdentifier, UIViewController *controller,
                                                          NSError *error))handler;

/// The process that serves a request; 0 when there is none.
- (int)pidForRequestIdentifier:(id<NSCopying>)requestIdentifier;

@end

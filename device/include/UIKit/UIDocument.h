#pragma once

#import <Foundation/Foundation.h>
#import <UIKit/UIKitDefines.h>

typedef NS_ENUM(NSInteger, UIDocumentChangeKind) {
  UIDocumentChangeDone,
  UIDocumentChangeUndone,
  UIDocumentChangeRedone,
  UIDocumentChangeCleared,
};

typedef NS_ENUM(NSInteger, UIDocumentSaveOperation) {
  UIDocumentSaveForCreating,
  UIDocumentSaveForOverwriting,
};

typedef NS_OPTIONS(NSUInteger, UIDocumentState) {
  UIDocumentStateNormal = 0,
  UIDocumentStateClosed = 1 << 0,
  UIDocumentStateInConflict = 1 << 1,
  UIDocumentStateSavingError = 1 << 2,
  UIDocumentStateEditingDisabled = 1 << 3,
  UIDocumentStateProgressAvailable = 1 << 4,
};

UIKIT_EXTERN NSNotificationName const UIDocumentStateChangedNotification;

@interface UIDocument : NSObject {
@private
  NSURL *_fileURL;
  NSDate *_fileModificationDate;
  UIDocumentState _documentState;
  BOOL _hasUnsavedChanges;
}

- (instancetype)initWithFileURL:(NSURL *)url;

@property (readonly) NSURL *fileURL;
@property (readonly, copy) NSString *localizedName;
@property (readonly, copy) NSString *fileType;
@property (copy) NSDate *fileModificationDate;
@property (readonly) UIDocumentState documentState;
@property (nonatomic, readonly) BOOL hasUnsavedChanges;

- (void)openWithCompletionHandler:(void (^)(BOOL success))completionHandler;
- (void)closeWithCompletionHandler:(void (^)(BOOL success))completionHandler;
- (BOOL)loadFromContents:(id)contents ofType:(NSString *)typeName error:(NSError **)outError;
- (id)contentsForType:(NSString *)typeName error:(NSError **)outError;

- (void)updateChangeCount:(UIDocumentChangeKind)change;
- (void)saveToURL:(NSURL *)url
     forSaveOperation:(UIDocumentSaveOperation)saveOperation
    completionHandler:(void (^)(BOOL success))completionHandler;
- (void)autosaveWithCompletionHandler:(void (^)(BOOL success))completionHandler;

- (void)performAsynchronousFileAccessUsingBlock:(void (^)(void))block;
- (void)handleError:(NSError *)error userInteractionPermitted:(BOOL)userInteractionPermitted;
- (void)finishedHandlingError:(NSError *)error recovered:(BOOL)recovered;
- (void)disableEditing;
- (void)enableEditing;

@end

// Reading and writing, called on a queue in the background.
@interface UIDocument (UIDocumentFiles)

- (BOOL)writeContents:(id)contents
        andAttributes:(NSDictionary *)additionalFileAttributes
          safelyToURL:(NSURL *)url
     forSaveOperation:(UIDocumentSaveOperation)saveOperation
                error:(NSError **)outError;
- (BOOL)writeContents:(id)contents
                  toURL:(NSURL *)url
       forSaveOperation:(UIDocumentSaveOperation)saveOperation
    originalContentsURL:(NSURL *)originalContentsURL
                  error:(NSError **)outError;
- (NSDictionary *)fileAttributesToWriteToURL:(NSURL *)url
                            forSaveOperation:(UIDocumentSaveOperation)saveOperation
                                       error:(NSError **)outError;
- (BOOL)readFromURL:(NSURL *)url error:(NSError **)outError;

@end

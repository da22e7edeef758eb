#import <UIKit/UIDocument.h>

#import <dispatch/dispatch.h>

NSNotificationName const UIDocumentStateChangedNotification = @"UIDocumentStateChangedNotification";

namespace {

using Handler = void (^)(BOOL success);

// Handlers run where the call came from. That is the main queue, unless an app calls from a thread of its own, which
// has no queue to go back to.
void finish(Handler handler, BOOL success, bool onMain) {
  if (!handler) return;
  if (!onMain) return handler(success);
  dispatch_async(dispatch_get_main_queue(), ^{
    handler(success);
  });
}

NSString *typeOfFile(NSURL *url) {
  static NSDictionary *const types = [@{
    @"txt" : @"public.plain-text",
    @"html" : @"public.html",
    @"json" : @"public.json",
    @"xml" : @"public.xml",
    @"plist" : @"com.apple.property-list",
    @"rtf" : @"public.rtf",
    @"pdf" : @"com.adobe.pdf",
    @"png" : @"public.png",
    @"jpg" : @"public.jpeg",
    @"jpeg" : @"public.jpeg",
  } retain];
  NSString *const known = [types objectForKey:[[url pathExtension] lowercaseString]];
  return known ? known : @"public.data";
}

NSDate *modificationDateOf(NSURL *url) {
  return [[[NSFileManager defaultManager] attributesOfItemAtPath:[url path] error:NULL] fileModificationDate];
}

} // namespace

@interface UIDocument (QVDeviceInternal)
- (void)qvdevice_setState:(UIDocumentState)state;
- (void)qvdevice_didSaveToURL:(NSURL *)url;
@end

@implementation UIDocument

- (instancetype)init {
  return [self initWithFileURL:nil];
}

- (instancetype)initWithFileURL:(NSURL *)url {
  if (![url isFileURL]) {
    [self release];
    [NSException raise:NSInvalidArgumentException format:@"-[UIDocument initWithFileURL:]: %@ is not a file URL", url];
  }
  if ((self = [super init])) {
    _fileURL = [url copy];
    _documentState = UIDocumentStateClosed;
  }
  return self;
}

- (void)dealloc {
  [_fileURL release];
  [_fileModificationDate release];
  [super dealloc];
}

// A save in the background changes what another thread may be reading.
- (NSURL *)fileURL {
  @synchronized(self) {
    return [[_fileURL retain] autorelease];
  }
}

- (NSDate *)fileModificationDate {
  @synchronized(self) {
    return [[_fileModificationDate retain] autorelease];
  }
}

- (void)setFileModificationDate:(NSDate *)date {
  @synchronized(self) {
    [_fileModificationDate autorelease];
    _fileModificationDate = [date copy];
  }
}

- (UIDocumentState)documentState {
  @synchronized(self) {
    return _documentState;
  }
}

- (NSString *)localizedName {
  return [[[self fileURL] lastPathComponent] stringByDeletingPathExtension];
}

- (NSString *)fileType {
  return typeOfFile([self fileURL]);
}

- (BOOL)hasUnsavedChanges {
  return _hasUnsavedChanges;
}

- (void)updateChangeCount:(UIDocumentChangeKind)change {
  _hasUnsavedChanges = change != UIDocumentChangeCleared;
}

- (id)contentsForType:(NSString *)typeName error:(NSError **)outError {
  (void)typeName;
  (void)outError;
  return nil;
}

- (BOOL)loadFromContents:(id)contents ofType:(NSString *)typeName error:(NSError **)outError {
  (void)contents;
  (void)typeName;
  (void)outError;
  return YES;
}

- (void)performAsynchronousFileAccessUsingBlock:(void (^)(void))block {
  dispatch_async(dispatch_get_global_queue(DISPATCH_QUEUE_PRIORITY_DEFAULT, 0), block);
}

- (void)openWithCompletionHandler:(Handler)completionHandler {
  const bool onMain = [NSThread isMainThread];
  NSURL *const url = [self fileURL];
  [self performAsynchronousFileAccessUsingBlock:^{
    NSError *error = nil;
    const BOOL opened = [self readFromURL:url error:&error];
    if (opened) {
      [self setFileModificationDate:modificationDateOf(url)];
      [self qvdevice_setState:UIDocumentStateNormal];
    } else {
      [self handleError:error userInteractionPermitted:YES];
    }
    finish(completionHandler, opened, onMain);
  }];
}

- (void)closeWithCompletionHandler:(Handler)completionHandler {
  const bool onMain = [NSThread isMainThread];
  if (![self hasUnsavedChanges]) {
    [self qvdevice_setState:[self documentState] | UIDocumentStateClosed];
    finish(completionHandler, YES, onMain);
    return;
  }
  [self autosaveWithCompletionHandler:^(BOOL saved) {
    [self qvdevice_setState:[self documentState] | UIDocumentStateClosed];
    if (completionHandler) completionHandler(saved);
  }];
}

- (void)autosaveWithCompletionHandler:(Handler)completionHandler {
  if (![self hasUnsavedChanges]) {
    finish(completionHandler, YES, [NSThread isMainThread]);
    return;
  }
  [self saveToURL:[self fileURL] forSaveOperation:UIDocumentSaveForOverwriting completionHandler:completionHandler];
}

- (void)saveToURL:(NSURL *)url
     forSaveOperation:(UIDocumentSaveOperation)saveOperation
    completionHandler:(Handler)completionHandler {
  const bool onMain = [NSThread isMainThread];
  // The app's objects are read here, on the thread that owns them; only what they gave is written elsewhere.
  NSError *problem = nil;
  id const contents = [self contentsForType:typeOfFile(url) error:&problem];
  NSDictionary *const attributes =
      contents ? [self fileAttributesToWriteToURL:url forSaveOperation:saveOperation error:&problem] : nil;
  if (!attributes) {
    [self handleError:problem userInteractionPermitted:YES];
    finish(completionHandler, NO, onMain);
    return;
  }
  [self performAsynchronousFileAccessUsingBlock:^{
    NSError *error = nil;
    const BOOL saved = [self writeContents:contents andAttributes:attributes safelyToURL:url
                          forSaveOperation:saveOperation
                                     error:&error];
    if (saved)
      [self qvdevice_didSaveToURL:url];
    else
      [self handleError:error userInteractionPermitted:YES];
    finish(completionHandler, saved, onMain);
  }];
}

- (void)handleError:(NSError *)error userInteractionPermitted:(BOOL)userInteractionPermitted {
  (void)userInteractionPermitted;
  [self qvdevice_setState:[self documentState] | UIDocumentStateSavingError];
  [self finishedHandlingError:error recovered:NO];
}

- (void)finishedHandlingError:(NSError *)error recovered:(BOOL)recovered {
  (void)error;
  (void)recovered;
}

- (void)disableEditing {
}

- (void)enableEditing {
}

@end

@implementation UIDocument (QVDeviceInternal)

- (void)qvdevice_setState:(UIDocumentState)state {
  @synchronized(self) {
    if (state == _documentState) return;
    _documentState = state;
  }
  [[NSNotificationCenter defaultCenter] postNotificationName:UIDocumentStateChangedNotification object:self];
}

- (void)qvdevice_didSaveToURL:(NSURL *)url {
  @synchronized(self) {
    [_fileURL autorelease];
    _fileURL = [url copy];
    _hasUnsavedChanges = NO;
  }
  [self setFileModificationDate:modificationDateOf(url)];
  [self qvdevice_setState:UIDocumentStateNormal];
}

@end

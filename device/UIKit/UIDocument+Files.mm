#import <UIKit/UIDocument.h>

#import <dispatch/dispatch.h>

#import "Foundation/FileCreation.h"
#import "Foundation/FileErrors.h"
#import "Foundation/FileWriting.h"
#import "Foundation/ItemReplacement.h"

using namespace qvdevice;

namespace {

// A folder of its own for each save, out of the app's sight and on the same volume as its documents.
NSString *folderForSaving(NSError **error) {
  NSString *const name =
      [NSString stringWithFormat:@"(A Document Being Saved By %@) %@", [[NSProcessInfo processInfo] processName],
                                 [[NSUUID UUID] UUIDString]];
  NSString *const folder = [NSTemporaryDirectory() stringByAppendingPathComponent:name];
  return createFolder(folder, NO, nil, error) ? folder : nil;
}

} // namespace

@implementation UIDocument (UIDocumentFiles)

- (NSDictionary *)fileAttributesToWriteToURL:(NSURL *)url
                            forSaveOperation:(UIDocumentSaveOperation)saveOperation
                                       error:(NSError **)outError {
  (void)url;
  (void)saveOperation;
  (void)outError;
  return @{NSFileExtensionHidden : [NSNumber numberWithBool:YES]};
}

// The document at `url` is the old one or the new one, whole, whatever happens on the way.
- (BOOL)writeContents:(id)contents
        andAttributes:(NSDictionary *)additionalFileAttributes
          safelyToURL:(NSURL *)url
     forSaveOperation:(UIDocumentSaveOperation)saveOperation
                error:(NSError **)outError {
  NSString *const place = writablePath(url, outError);
  NSString *const folder = place ? folderForSaving(outError) : nil;
  if (!folder) return NO;
  NSString *const made = [folder stringByAppendingPathComponent:[place lastPathComponent]];
  BOOL written = [self writeContents:contents toURL:[NSURL fileURLWithPath:made] forSaveOperation:saveOperation
                 originalContentsURL:saveOperation == UIDocumentSaveForOverwriting ? [self fileURL] : nil
                               error:outError];
  if (written && [additionalFileAttributes count]) written = setAttributes(additionalFileAttributes, made, outError);
  if (written)
    if (const int failure = replaceItem(place, made)) written = failedWriting(outError, place, failure);
  [[NSFileManager defaultManager] removeItemAtPath:folder error:NULL];
  return written;
}

- (BOOL)writeContents:(id)contents
                  toURL:(NSURL *)url
       forSaveOperation:(UIDocumentSaveOperation)saveOperation
    originalContentsURL:(NSURL *)originalContentsURL
                  error:(NSError **)outError {
  (void)saveOperation;
  if ([contents isKindOfClass:[NSData class]]) return writeFile(contents, url, {}, outError);
  if ([contents isKindOfClass:[NSFileWrapper class]])
    return [contents writeToURL:url options:0 originalContentsURL:originalContentsURL error:outError];
  return failed(
      outError, NSFileWriteUnknownError,
      [NSString stringWithFormat:@"The document “%@” has contents that can’t be saved.", [self localizedName]],
      url ? @{NSURLErrorKey : url} : nil);
}

- (BOOL)readFromURL:(NSURL *)url error:(NSError **)outError {
  NSFileManager *const manager = [NSFileManager defaultManager];
  NSDictionary *const attributes = [manager attributesOfItemAtPath:[url path] error:outError];
  if (!attributes) return NO;
  id contents = nil;
  if ([[attributes fileType] isEqualToString:NSFileTypeDirectory])
    contents = [[[NSFileWrapper alloc] initWithURL:url options:NSFileWrapperReadingImmediate
                                             error:outError] autorelease];
  else if (!(contents = [manager contentsAtPath:[url path]]))
    failedReading(outError, [url path], EACCES);
  if (!contents) return NO;
  if ([NSThread isMainThread]) return [self loadFromContents:contents ofType:[self fileType] error:outError];
  // The app's objects belong to the main thread.
  __block BOOL loaded = NO;
  __block NSError *problem = nil;
  dispatch_sync(dispatch_get_main_queue(), ^{
    loaded = [self loadFromContents:contents ofType:[self fileType] error:&problem];
    [problem retain];
  });
  if (outError) *outError = problem;
  [problem autorelease];
  return loaded;
}

@end

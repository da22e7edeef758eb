#include "Protection.h"

#include <fcntl.h>
#include <unistd.h>

@interface QVTextDocument : UIDocument {
@public
  id content;
}
@end

@implementation QVTextDocument
- (id)contentsForType:(NSString *)typeName error:(NSError **)outError {
  return content;
}
- (BOOL)loadFromContents:(id)contents ofType:(NSString *)typeName error:(NSError **)outError {
  content = contents;
  return YES;
}
@end

// Writes past every hooked method: what is protected then was protected by the method that called this one.
static BOOL writeBare(NSURL *url) {
  const int file = open([[url path] fileSystemRepresentation], O_CREAT | O_TRUNC | O_WRONLY, 0644);
  if (file < 0) return NO;
  const bool written = write(file, "bare", 4) == 4;
  close(file);
  return written;
}

@interface QVBareSafely : QVTextDocument
@end
@implementation QVBareSafely
- (BOOL)writeContents:(id)contents
        andAttributes:(NSDictionary *)attributes
          safelyToURL:(NSURL *)url
     forSaveOperation:(UIDocumentSaveOperation)operation
                error:(NSError **)error {
  return writeBare(url);
}
@end

@interface QVBareDirectly : QVTextDocument
@end
@implementation QVBareDirectly
- (BOOL)writeContents:(id)contents
                  toURL:(NSURL *)url
       forSaveOperation:(UIDocumentSaveOperation)operation
    originalContentsURL:(NSURL *)original
                  error:(NSError **)error {
  return writeBare(url);
}
@end

namespace {

class Document : public Protection {
protected:
  /// Saves and waits for the handler, which notes its answer and the class that the file has at that moment.
  bool save(NSString *name, id content, Class kind = [QVTextDocument class]) {
    NSURL *target = url(name);
    QVTextDocument *document = [[[kind alloc] initWithFileURL:target] autorelease];
    document->content = content;
    __block int calls = 0;
    __block bool answer = false;
    __block std::string seen;
    [document saveToURL:target forSaveOperation:UIDocumentSaveForCreating completionHandler:^(BOOL success) {
      if (calls == 0) seen = support::storedClass([target path]);
      answer = success;
      ++calls;
    }];
    NSDate *limit = [NSDate dateWithTimeIntervalSinceNow:20];
    while (calls == 0 && [limit timeIntervalSinceNow] > 0) {
      [[NSRunLoop currentRunLoop] runMode:NSDefaultRunLoopMode beforeDate:[NSDate dateWithTimeIntervalSinceNow:0.05]];
    }
    EXPECT_EQ(calls, 1);
    classSeenByHandler = seen;
    return answer;
  }
  std::string classSeenByHandler;
};

} // namespace

TEST_F(Document, SavedIsProtectedBeforeTheHostsHandlerHearsOfIt) {
  EXPECT_TRUE(save(@"a.txt", bytes()));
  EXPECT_EQ(classSeenByHandler, kRaised);
  EXPECT_EQ(classOf(@"a.txt"), kRaised);
}

TEST_F(Document, SavedAsAFileWrapperIsProtectedAtItsTop) {
  NSFileWrapper *file = [[[NSFileWrapper alloc] initRegularFileWithContents:bytes()] autorelease];
  NSFileWrapper *bundle = [[[NSFileWrapper alloc] initDirectoryWithFileWrappers:@{@"inner" : file}] autorelease];
  EXPECT_TRUE(save(@"a.bundle", bundle));
  EXPECT_EQ(classOf(@"a.bundle"), kRaised);
}

TEST_F(Document, SavedByAHostThatWritesItselfIsProtectedBeforeItsHandlerHearsOfIt) {
  EXPECT_TRUE(save(@"a.txt", bytes(), [QVBareSafely class]));
  EXPECT_EQ(classSeenByHandler, kRaised);
}

TEST_F(Document, ThatFailsToSaveTellsTheHostNoAndProtectsNothing) {
  ASSERT_TRUE([bytes() writeToFile:path(@"a.txt") atomically:NO]);
  support::storeClass(path(@"a.txt"), kNone);
  support::clearLog();
  EXPECT_FALSE(save(@"a.txt", nil)); // no contents, no save
  EXPECT_EQ(classSeenByHandler, kNone);
  EXPECT_EQ(classOf(@"a.txt"), kNone);
  EXPECT_TRUE(support::log().empty());
}

TEST_F(Document, WrittenSafelyByAHostThatWritesItselfIsProtected) {
  QVTextDocument *document = [[[QVBareDirectly alloc] initWithFileURL:url(@"a")] autorelease];
  EXPECT_TRUE([document writeContents:bytes() andAttributes:nil safelyToURL:url(@"a")
                     forSaveOperation:UIDocumentSaveForCreating
                                error:NULL]);
  EXPECT_EQ(classOf(@"a"), kRaised);
}

TEST_F(Document, WritingThatFailsLeavesTheProtectionOfWhatStandsThere) {
  QVTextDocument *document = [[[QVTextDocument alloc] initWithFileURL:occupiedURL()] autorelease];
  EXPECT_FALSE([document writeContents:bytes() toURL:occupiedURL() forSaveOperation:UIDocumentSaveForOverwriting
                   originalContentsURL:nil
                                 error:NULL]);
  EXPECT_EQ(classOfOccupied(), kNone);
  QVTextDocument *bare = [[[QVBareDirectly alloc] initWithFileURL:impossibleURL()] autorelease];
  NSError *error = nil;
  EXPECT_FALSE([bare writeContents:@"no kind that a document can write" andAttributes:nil safelyToURL:impossibleURL()
                  forSaveOperation:UIDocumentSaveForCreating
                             error:&error]);
  EXPECT_TRUE(support::log().empty());
}

TEST_F(Document, WritingContentsSafelyIsProtected) {
  QVTextDocument *document = [[[QVTextDocument alloc] initWithFileURL:url(@"a")] autorelease];
  NSError *error = nil;
  EXPECT_TRUE([document writeContents:bytes() andAttributes:nil safelyToURL:url(@"a")
                     forSaveOperation:UIDocumentSaveForCreating
                                error:&error]);
  EXPECT_EQ(classOf(@"a"), kRaised);
}

TEST_F(Document, WritingContentsDirectlyIsProtected) {
  QVTextDocument *document = [[[QVTextDocument alloc] initWithFileURL:url(@"a")] autorelease];
  EXPECT_TRUE([document writeContents:bytes() toURL:url(@"a") forSaveOperation:UIDocumentSaveForCreating
                  originalContentsURL:nil
                                error:NULL]);
  EXPECT_EQ(classOf(@"a"), kRaised);
}

TEST_F(Document, WritingContentsThatFailsGivesThePlatformsError) {
  QVTextDocument *document = [[[QVTextDocument alloc] initWithFileURL:url(@"a")] autorelease];
  NSError *error = nil;
  EXPECT_FALSE([document writeContents:bytes() toURL:impossibleURL() forSaveOperation:UIDocumentSaveForCreating
                   originalContentsURL:nil
                                 error:&error]);
  EXPECT_NE(error, nil);
  EXPECT_TRUE(support::log().empty());
}

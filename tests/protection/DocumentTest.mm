#include "Protection.h"

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

namespace {

class Document : public Protection {
protected:
  /// Saves and waits for the handler, which notes its answer and the class that the file has at that moment.
  bool save(NSString *name, id content) {
    NSURL *target = url(name);
    QVTextDocument *document = [[[QVTextDocument alloc] initWithFileURL:target] autorelease];
    document->content = content;
    __block bool called = false;
    __block bool answer = false;
    __block std::string seen;
    [document saveToURL:target forSaveOperation:UIDocumentSaveForCreating completionHandler:^(BOOL success) {
      seen = support::storedClass([target path]);
      answer = success;
      called = true;
    }];
    NSDate *limit = [NSDate dateWithTimeIntervalSinceNow:20];
    while (!called && [limit timeIntervalSinceNow] > 0) {
      [[NSRunLoop currentRunLoop] runMode:NSDefaultRunLoopMode beforeDate:[NSDate dateWithTimeIntervalSinceNow:0.05]];
    }
    EXPECT_TRUE(called);
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

TEST_F(Document, ThatFailsToSaveTellsTheHostNoAndProtectsNothing) {
  ASSERT_TRUE([[NSFileManager defaultManager] createDirectoryAtPath:path(@"a.txt") withIntermediateDirectories:NO
                                                         attributes:nil
                                                              error:NULL]);
  support::storeClass(path(@"a.txt"), kNone);
  support::clearLog();
  EXPECT_FALSE(save(@"a.txt/missing/b.txt", bytes()));
  EXPECT_EQ(classOf(@"a.txt"), kNone);
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

#import "Files.h"
#import "Raised.h"

#import <UIKit/UIKit.h>

#include <cerrno>
#include <string>
#include <vector>

// A document whose contents a test hands out, and that notes what was asked of it and on which thread.
@interface NotedDocument : UIDocument {
@public
  id contents;
  NSError *contentsError;
  id loaded;
  BOOL refusesToLoad;
  std::vector<std::string> *notes;
}
@end

@implementation NotedDocument

- (void)note:(const char *)what {
  @synchronized(self) {
    if (notes) notes->push_back(std::string(what) + ([NSThread isMainThread] ? " on main" : " in background"));
  }
}

- (id)contentsForType:(NSString *)typeName error:(NSError **)outError {
  (void)typeName;
  [self note:"contentsForType"];
  if (outError && contentsError) *outError = contentsError;
  return contents;
}

- (BOOL)loadFromContents:(id)newContents ofType:(NSString *)typeName error:(NSError **)outError {
  (void)typeName;
  [self note:"loadFromContents"];
  loaded = [newContents retain];
  if (refusesToLoad && outError) *outError = [NSError errorWithDomain:@"Test" code:1 userInfo:nil];
  return !refusesToLoad;
}

- (BOOL)writeContents:(id)newContents
        andAttributes:(NSDictionary *)attributes
          safelyToURL:(NSURL *)url
     forSaveOperation:(UIDocumentSaveOperation)operation
                error:(NSError **)error {
  [self note:"safelyToURL"];
  return [super writeContents:newContents andAttributes:attributes safelyToURL:url forSaveOperation:operation
                        error:error];
}

- (BOOL)writeContents:(id)newContents
                  toURL:(NSURL *)url
       forSaveOperation:(UIDocumentSaveOperation)operation
    originalContentsURL:(NSURL *)original
                  error:(NSError **)error {
  [self note:"toURL"];
  return [super writeContents:newContents toURL:url forSaveOperation:operation originalContentsURL:original
                        error:error];
}

- (void)handleError:(NSError *)error userInteractionPermitted:(BOOL)permitted {
  [self note:"handleError"];
  [super handleError:error userInteractionPermitted:permitted];
}

@end

namespace {

class Document : public Files {
protected:
  NotedDocument *document(NSString *name, id contents) {
    NotedDocument *const made = [[[NotedDocument alloc] initWithFileURL:url(name)] autorelease];
    made->contents = [contents retain];
    made->notes = &notes;
    return made;
  }

  struct Outcome {
    bool called = false;
    bool success = false;
    bool onMain = false;
  };

  // Runs the main loop until the handler that `start` was given has been called.
  template <class Start> Outcome wait(Start start) {
    __block Outcome outcome;
    start(^(BOOL success) {
      outcome = {true, success != NO, [NSThread isMainThread] != NO};
    });
    EXPECT_FALSE(outcome.called) << "the handler must not run inside the call";
    NSDate *const limit = [NSDate dateWithTimeIntervalSinceNow:10];
    while (!outcome.called && [limit timeIntervalSinceNow] > 0)
      [[NSRunLoop currentRunLoop] runMode:NSDefaultRunLoopMode beforeDate:[NSDate dateWithTimeIntervalSinceNow:0.05]];
    EXPECT_TRUE(outcome.called);
    return outcome;
  }

  Outcome save(UIDocument *made, NSString *name, UIDocumentSaveOperation operation = UIDocumentSaveForCreating) {
    return wait([&](void (^handler)(BOOL)) {
      [made saveToURL:url(name) forSaveOperation:operation completionHandler:handler];
    });
  }

  std::vector<std::string> notes;
};

TEST_F(Document, ANewOneIsClosedAndKnowsItsNameAndURL) {
  NotedDocument *const made = document(@"My letter.txt", nil);
  EXPECT_EQ([made documentState], UIDocumentStateClosed);
  EXPECT_EQ(text([made localizedName]), "My letter");
  EXPECT_EQ(text([made fileType]), "public.plain-text");
  EXPECT_TRUE([[made fileURL] isEqual:url(@"My letter.txt")]);
  EXPECT_EQ([made fileModificationDate], nil);
}

TEST_F(Document, OneWithoutAFileURLIsRefused) {
  NSURL *const none = nil;
  EXPECT_EQ(raisedBy([&] { [[UIDocument alloc] initWithFileURL:none]; }), "NSInvalidArgumentException");
  EXPECT_EQ(raisedBy([&] { [[UIDocument alloc] initWithFileURL:[NSURL URLWithString:@"http://example.com"]]; }),
            "NSInvalidArgumentException");
}

TEST_F(Document, SavingWritesInTheBackgroundAndAnswersOnTheMainThread) {
  NotedDocument *const made = document(@"file.txt", dataOf("words"));
  const Outcome outcome = save(made, @"file.txt");
  EXPECT_TRUE(outcome.success);
  EXPECT_TRUE(outcome.onMain);
  EXPECT_EQ(contents(@"file.txt"), "words");
  EXPECT_EQ(notes,
            (std::vector<std::string>{"contentsForType on main", "safelyToURL in background", "toURL in background"}));
  EXPECT_EQ([made documentState], UIDocumentStateNormal);
  EXPECT_NEAR([[made fileModificationDate] timeIntervalSinceNow], 0, 60);
  EXPECT_EQ([names() count], 1u);
}

TEST_F(Document, SavingElsewhereMovesTheDocumentThere) {
  NotedDocument *const made = document(@"one.txt", dataOf("words"));
  EXPECT_TRUE(save(made, @"one.txt").success);
  EXPECT_TRUE(save(made, @"two.txt").success);
  EXPECT_TRUE([[made fileURL] isEqual:url(@"two.txt")]);
  EXPECT_EQ([names() count], 2u);
}

TEST_F(Document, AFileWrapperIsSavedAsAFolderAndReplacedWhole) {
  NSFileWrapper *const leaf = [[[NSFileWrapper alloc] initRegularFileWithContents:dataOf("1")] autorelease];
  NSFileWrapper *const first = [[[NSFileWrapper alloc] initDirectoryWithFileWrappers:@{@"a" : leaf}] autorelease];
  NSFileWrapper *const second = [[[NSFileWrapper alloc] initDirectoryWithFileWrappers:@{@"b" : leaf}] autorelease];
  EXPECT_TRUE(save(document(@"package", first), @"package").success);
  EXPECT_EQ(contents(@"package/a"), "1");
  EXPECT_TRUE(save(document(@"package", second), @"package", UIDocumentSaveForOverwriting).success);
  EXPECT_EQ(contents(@"package/b"), "1");
  EXPECT_EQ(contents(@"package/a"), "(missing)");
}

TEST_F(Document, AFailedSaveAnswersNoAndLeavesTheOldFile) {
  mkdir([path(@"taken") UTF8String], 0755);
  NotedDocument *const made = document(@"no/file.txt", dataOf("new"));
  const Outcome outcome = save(made, @"no/file.txt");
  EXPECT_FALSE(outcome.success);
  EXPECT_TRUE(outcome.onMain);
  EXPECT_TRUE([made documentState] & UIDocumentStateSavingError);
  EXPECT_EQ(notes.back(), "handleError in background");
}

TEST_F(Document, NothingToSaveAnswersNo) {
  NotedDocument *const made = document(@"file.txt", nil);
  const Outcome outcome = save(made, @"file.txt");
  EXPECT_FALSE(outcome.success);
  EXPECT_TRUE(outcome.onMain);
  EXPECT_EQ([names() count], 0u);
}

TEST_F(Document, ContentsOfAnotherKindAnswerNo) {
  EXPECT_FALSE(save(document(@"file.txt", @"a string"), @"file.txt").success);
  EXPECT_EQ([names() count], 0u);
}

TEST_F(Document, SavingWithoutAHandlerSaves) {
  NotedDocument *const made = document(@"file.txt", dataOf("words"));
  [made saveToURL:url(@"file.txt") forSaveOperation:UIDocumentSaveForCreating completionHandler:nil];
  NSDate *const limit = [NSDate dateWithTimeIntervalSinceNow:10];
  while ([made documentState] != UIDocumentStateNormal && [limit timeIntervalSinceNow] > 0)
    [[NSRunLoop currentRunLoop] runMode:NSDefaultRunLoopMode beforeDate:[NSDate dateWithTimeIntervalSinceNow:0.05]];
  EXPECT_EQ(contents(@"file.txt"), "words");
}

TEST_F(Document, WritingLeavesNothingInTheTemporaryFolder) {
  NSArray *const before = [manager() contentsOfDirectoryAtPath:NSTemporaryDirectory() error:NULL];
  EXPECT_TRUE(save(document(@"file.txt", dataOf("x")), @"file.txt").success);
  EXPECT_FALSE(save(document(@"no/file.txt", dataOf("x")), @"no/file.txt").success);
  EXPECT_EQ([[manager() contentsOfDirectoryAtPath:NSTemporaryDirectory() error:NULL] count], [before count]);
}

TEST_F(Document, WritingReportsItsErrorAndTakesNoErrorSlot) {
  NotedDocument *const made = document(@"no/file.txt", dataOf("x"));
  NSError *error = nil;
  EXPECT_FALSE([made writeContents:dataOf("x") andAttributes:nil safelyToURL:url(@"no/file.txt")
                  forSaveOperation:UIDocumentSaveForCreating
                             error:&error]);
  expectError(error, NSFileNoSuchFileError, path(@"no/file.txt"), ENOENT);
  EXPECT_FALSE([made writeContents:dataOf("x") toURL:url(@"no/file.txt") forSaveOperation:UIDocumentSaveForCreating
               originalContentsURL:nil
                             error:NULL]);
}

TEST_F(Document, TheAttributesThatAreGivenReachTheFile) {
  NotedDocument *const made = document(@"file.txt", nil);
  EXPECT_TRUE([made writeContents:dataOf("x") andAttributes:@{NSFileProtectionKey : NSFileProtectionComplete}
                      safelyToURL:url(@"file.txt")
                 forSaveOperation:UIDocumentSaveForCreating
                            error:NULL]);
  EXPECT_EQ(stored(@"file.txt"), "NSFileProtectionComplete");
}

TEST_F(Document, OpeningReadsInTheBackgroundAndLoadsOnTheMainThread) {
  make(@"file.txt", "words");
  NotedDocument *const made = document(@"file.txt", nil);
  const Outcome outcome = wait([&](void (^handler)(BOOL)) { [made openWithCompletionHandler:handler]; });
  EXPECT_TRUE(outcome.success);
  EXPECT_TRUE(outcome.onMain);
  EXPECT_TRUE([made->loaded isEqual:dataOf("words")]);
  EXPECT_EQ(notes, std::vector<std::string>{"loadFromContents on main"});
  EXPECT_EQ([made documentState], UIDocumentStateNormal);
}

TEST_F(Document, OpeningAFolderLoadsAFileWrapper) {
  mkdir([path(@"package") UTF8String], 0755);
  make(@"package/a", "1");
  NotedDocument *const made = document(@"package", nil);
  EXPECT_TRUE(wait([&](void (^handler)(BOOL)) { [made openWithCompletionHandler:handler]; }).success);
  NSFileWrapper *const leaf = [[made->loaded fileWrappers] objectForKey:@"a"];
  EXPECT_TRUE([[leaf regularFileContents] isEqual:dataOf("1")]);
}

TEST_F(Document, OpeningWhatIsMissingOrCannotBeLoadedAnswersNoAndStaysClosed) {
  make(@"file.txt");
  NotedDocument *const refusing = document(@"file.txt", nil);
  refusing->refusesToLoad = YES;
  for (NotedDocument *each in @[ document(@"missing.txt", nil), refusing ]) {
    EXPECT_FALSE(wait([&](void (^handler)(BOOL)) { [each openWithCompletionHandler:handler]; }).success);
    EXPECT_TRUE([each documentState] & UIDocumentStateClosed);
  }
}

TEST_F(Document, ClosingSavesWhatChanged) {
  NotedDocument *const made = document(@"file.txt", dataOf("one"));
  ASSERT_TRUE(save(made, @"file.txt").success);
  made->contents = [dataOf("two") retain];
  [made updateChangeCount:UIDocumentChangeDone];
  EXPECT_TRUE([made hasUnsavedChanges]);
  EXPECT_TRUE(wait([&](void (^handler)(BOOL)) { [made closeWithCompletionHandler:handler]; }).success);
  EXPECT_EQ(contents(@"file.txt"), "two");
  EXPECT_FALSE([made hasUnsavedChanges]);
  EXPECT_EQ([made documentState], UIDocumentStateClosed);
}

TEST_F(Document, ClosingWithoutChangesWritesNothing) {
  NotedDocument *const made = document(@"file.txt", dataOf("one"));
  EXPECT_TRUE(wait([&](void (^handler)(BOOL)) { [made closeWithCompletionHandler:handler]; }).success);
  EXPECT_EQ([names() count], 0u);
}

} // namespace

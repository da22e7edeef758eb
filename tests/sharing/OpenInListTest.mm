// The list of apps that can open a document.
#import "SharingTest.h"

#import "OpenInMenu.h"
#import "OtherApps.h"

namespace {
// What the platform answers, and what it was asked with.
id list;
int asked;
} // namespace

/// An app in the list.
@interface QVListedApp : NSObject {
@public
  NSString *identifier;
}
@end
@implementation QVListedApp
- (void)dealloc {
  [identifier release];
  [super dealloc];
}
- (NSString *)applicationIdentifier {
  return identifier;
}
@end

/// A platform whose list a test makes: by this name the library reaches the platform's method.
@interface QVListingController : UIDocumentInteractionController
@end
@implementation QVListingController
- (id)sb__applications:(BOOL)all {
  asked = all;
  return list;
}
@end

namespace {

const Lines kChanged = {"0 [UIDocumentationInteractionController _application:] has been changed!"};

QVListedApp *app(NSString *identifier) {
  QVListedApp *const made = [[[QVListedApp alloc] init] autorelease];
  made->identifier = [identifier copy];
  return made;
}

class OpenInList : public SharingTest {
protected:
  void SetUp() override {
    SharingTest::SetUp();
    controller = [[QVListingController alloc] init];
    useWhitelist(@[ @"com.example." ]);
  }
  void TearDown() override {
    [controller release];
    list = nil;
    SharingTest::TearDown();
  }

  Lines filtered(NSArray *identifiers) {
    NSMutableArray *const apps = [NSMutableArray array];
    for (NSString *identifier in identifiers)
      [apps addObject:app(identifier)];
    list = apps;
    id const answer = [controller _applications:NO];
    EXPECT_EQ(answer, list);
    Lines left;
    for (QVListedApp *each in answer)
      left.push_back([each->identifier UTF8String]);
    return left;
  }

  UIDocumentInteractionController *controller = nil;
};

} // namespace

TEST_F(OpenInList, HoldsTheAppsThatAreAllowedInThePlatformsOrder) {
  EXPECT_EQ(filtered(@[ @"com.example.z", @"org.other", @"com.example.a", @"org.another" ]),
            (Lines{"com.example.z", "com.example.a"}));
  EXPECT_EQ(support::log(), Lines());
}

TEST_F(OpenInList, LosesTwoRefusedAppsThatAreNeighbours) {
  EXPECT_EQ(filtered(@[ @"org.a", @"org.b", @"com.example.a", @"org.c", @"org.d" ]), (Lines{"com.example.a"}));
}

TEST_F(OpenInList, IsEmptyUnderPolicyZeroAndBeforeTheSDKIsReady) {
  allow(0, 1, 1);
  EXPECT_EQ(filtered(@[ @"com.example.a", @"org.a" ]), Lines());
  allowAll();
  sdk->ready = NO;
  EXPECT_EQ(filtered(@[ @"com.example.a", @"org.a" ]), Lines());
}

TEST_F(OpenInList, IsWholeUnderPolicyOne) {
  allowAll();
  EXPECT_EQ(filtered(@[ @"com.example.a", @"org.a" ]), (Lines{"com.example.a", "org.a"}));
}

TEST_F(OpenInList, ThatIsEmptyStaysSoWithoutALine) {
  EXPECT_EQ(filtered(@[]), Lines());
  EXPECT_EQ(support::log(), Lines());
}

TEST_F(OpenInList, LosesAnAppWithoutAnIdentifierUnlessEveryAppIsAllowed) {
  list = [NSMutableArray arrayWithObject:app(nil)];
  EXPECT_EQ([[controller _applications:NO] count], 0U);
  allow(0, 1, 1);
  list = [NSMutableArray arrayWithObject:app(nil)];
  EXPECT_EQ([[controller _applications:NO] count], 0U);
  allowAll();
  list = [NSMutableArray arrayWithObject:app(nil)];
  EXPECT_EQ([[controller _applications:NO] count], 1U);
}

TEST_F(OpenInList, LosesWhatHasNoIdentifierAtAllUnlessEveryAppIsAllowed) {
  list = [NSMutableArray arrayWithObject:@"com.example.a"];
  EXPECT_EQ([[controller _applications:NO] count], 0U);
  allowAll();
  list = [NSMutableArray arrayWithObject:@"com.example.a"];
  EXPECT_EQ([[controller _applications:NO] count], 1U);
}

TEST_F(OpenInList, ThatIsNilIsPassedOnWithALine) {
  list = nil;
  EXPECT_EQ([controller _applications:NO], nil);
  EXPECT_EQ(support::log(), kChanged);
}

TEST_F(OpenInList, ThatCannotBeChangedIsPassedOnUnfilteredWithALineEachTime) {
  list = [NSArray arrayWithObject:app(@"org.a")];
  EXPECT_EQ([controller _applications:NO], list);
  EXPECT_EQ([list count], 1U);
  EXPECT_EQ(support::log(), kChanged);
  [controller _applications:NO];
  EXPECT_EQ(support::log().size(), 2U);
}

TEST_F(OpenInList, OfAnotherKindIsPassedOnWithALine) {
  list = [NSMutableSet setWithObject:app(@"org.a")];
  EXPECT_EQ([controller _applications:NO], list);
  EXPECT_EQ([list count], 1U);
  EXPECT_EQ(support::log(), kChanged);
}

TEST_F(OpenInList, IsAskedForWithTheArgumentThatItIsGiven) {
  list = [NSMutableArray array];
  [controller _applications:YES];
  EXPECT_EQ(asked, 1);
  [controller _applications:NO];
  EXPECT_EQ(asked, 0);
}

TEST_F(OpenInList, LeavesToTheMenuOnlyAppsThatMayHaveTheDocument) {
  UIDocumentInteractionController *const menu = [UIDocumentInteractionController interactionControllerWithURL:letter()];
  ASSERT_TRUE([menu presentOpenInMenuFromRect:CGRectZero inView:[sharing::presenter() view] animated:NO]);
  ASSERT_EQ([[menu qvdevice_offered] count], 1U);
  [menu qvdevice_choose:[[menu qvdevice_offered] objectAtIndex:0]];
  EXPECT_EQ(sharing::whatLeft(), (Lines{"Apps/com.example.mail/Documents/Inbox/letter.txt"}));
}

TEST_F(OpenInList, LeavesNoMenuWhenNoAppMayHaveTheDocument) {
  allow(0, 1, 1);
  UIDocumentInteractionController *const menu = [UIDocumentInteractionController interactionControllerWithURL:letter()];
  EXPECT_FALSE([menu presentOpenInMenuFromRect:CGRectZero inView:[sharing::presenter() view] animated:NO]);
  EXPECT_EQ(sharing::whatLeft(), Lines());
}

// The host of an extension: what it asks of the platform, what it shows, and what it tells of the outcome.
#include "ExtensionTest.h"

#include <objc/runtime.h>

#include <atomic>
#include <thread>

namespace {

const std::string kPresent = "-[QVSBApplicationExtensionViewController presentExtension]";
const std::string kBlock = kPresent + "_block_invoke";
const Lines kLaunch = {"look for com.example.keypad", "set interruption", "set cancellation", "set completion",
                       "instantiate"};

std::string described(NSError *error) {
  return error ? support::text([error domain]) + " " + std::to_string([error code]) : "no error";
}

void (*present)(id, SEL, id, BOOL, id) = nullptr;
void notePresent(id self, SEL selector, UIViewController *controller, BOOL animated, id completion) {
  note(std::string(object_getClassName(self)) + " presents" + (animated ? ", animated" : "") +
       (completion ? ", with a completion" : ""));
  present(self, selector, controller, animated, completion);
}

class Host : public ExtensionTest {
protected:
  void SetUp() override {
    ExtensionTest::SetUp();
    extension = [[QVTestExtension alloc] init];
    setFound(extension);
    host = make();
    take();
  }
  void TearDown() override {
    [host release];
    setFound(nil);
    [extension release];
    [lastError release];
    lastError = nil;
    ExtensionTest::TearDown();
  }

  UIViewController<QVExtensionHost> *make() {
    return [(id<QVExtensionHost>)[hostClass() alloc]
        initWithExtensionIdentifier:@"com.example.keypad"
                         inputItems:@[ @"item" ] completionHandler:^(BOOL completed, NSArray *items, NSError *error) {
                           note(std::string("handler ") + (completed ? "YES" : "NO") + ", " +
                                (items ? support::text([items description]) : "no items") + ", " + described(error) +
                                ([NSThread isMainThread] ? "" : ", on another thread"));
                           [lastError release];
                           lastError = [error retain];
                         }];
  }

  /// Runs the work on a thread of its own, to its end.
  static void elsewhere(void (^work)()) {
    std::thread([work] {
      NSAutoreleasePool *const pool = [[NSAutoreleasePool alloc] init];
      work();
      [pool drain];
    }).join();
  }

  QVTestExtension *extension = nil;
  UIViewController<QVExtensionHost> *host = nil;
  static inline NSError *lastError = nil;
};

} // namespace

TEST_F(Host, IsAViewControllerWhoseMethodsHaveTheirTypes) {
  EXPECT_EQ([hostClass() superclass], [UIViewController class]);
  const std::pair<const char *, const char *> methods[] = {
      {"initWithExtensionIdentifier:inputItems:completionHandler:", "@40@0:8@16@24@?32"},
      {"viewWillAppear:", "v20@0:8C16"},
      {"presentExtension", "v16@0:8"},
      {"identifier", "@16@0:8"},
      {"inputItems", "@16@0:8"},
      {"handler", "@?16@0:8"},
      {"extension", "@16@0:8"},
      {"setExtension:", "v24@0:8@16"},
  };
  for (const auto &[selector, types] : methods) {
    const Method method = class_getInstanceMethod(hostClass(), sel_registerName(selector));
    ASSERT_TRUE(method != nullptr) << selector;
    EXPECT_STREQ(method_getTypeEncoding(method), types) << selector;
  }
  for (const char *selector : {"setIdentifier:", "setInputItems:", "setHandler:"})
    EXPECT_FALSE([hostClass() instancesRespondToSelector:sel_registerName(selector)]) << selector;
}

TEST_F(Host, LaunchesTheExtensionWhenItFirstAppearsAndNeverAgain) {
  [host viewWillAppear:NO];
  EXPECT_EQ(take(), kLaunch);
  EXPECT_EQ([host extension], extension);
  EXPECT_EQ(extension->inputItems, [host inputItems]);
  [host viewWillAppear:YES];
  EXPECT_EQ(take(), Lines{});
}

TEST_F(Host, ThatWasGivenAnExtensionDoesNotLookForOne) {
  [host setExtension:extension];
  [host viewWillAppear:NO];
  EXPECT_EQ(take(), Lines{});
}

TEST_F(Host, ForWhichNoExtensionIsInstalledReportsTheLookupsErrorAtOnceAndPresentsNothing) {
  setFound(nil);
  [host viewWillAppear:NO];
  EXPECT_EQ(take(), (Lines{"look for com.example.keypad",
                           "log 0 " + kPresent + " Failed to instantiate extension: there is no such extension",
                           "handler NO, no items, QVLookup 7"}));
  EXPECT_NE(lastError, nil);
  EXPECT_EQ([host extension], nil);
  EXPECT_EQ([host presentedViewController], nil);
}

TEST_F(Host, PresentsTheExtensionsControllerOnItselfAnimated) {
  present = reinterpret_cast<decltype(present)>(
      class_getMethodImplementation([UIViewController class], @selector(presentViewController:animated:completion:)));
  replaceMethod([UIViewController class],
                "presentViewController:animated:completion:", reinterpret_cast<IMP>(&notePresent));
  [window setRootViewController:host];
  take();
  UIViewController *const keypad = [[[UIViewController alloc] init] autorelease];
  extension->connected(@"request", keypad, nil);
  EXPECT_EQ(take(), (Lines{"log 5 " + kPresent + " Presenting view controller",
                           "QVSBApplicationExtensionViewController presents, animated"}));
  EXPECT_EQ([host presentedViewController], keypad);
}

TEST_F(Host, WhoseExtensionMakesNoControllerReportsItOnTheThreadThatItIsToldOn) {
  [host viewWillAppear:NO];
  take();
  NSError *const error = [NSError errorWithDomain:@"QVConnection" code:3
                                         userInfo:@{NSLocalizedDescriptionKey : @"it has none"}];
  elsewhere(^{
    extension->connected(@"request", nil, error);
    EXPECT_EQ(take(), (Lines{"log 0 " + kPresent + " Failed to instantiate view controller: it has none",
                             "handler NO, no items, QVConnection 3, on another thread"}));
  });
  EXPECT_EQ(lastError, error);
}

TEST_F(Host, WhoseRequestIsInterruptedReportsCode4097OfTheCocoaDomainOnTheMainQueue) {
  [host viewWillAppear:NO];
  take();
  elsewhere(^{
    extension->interrupted(@"request");
  });
  EXPECT_EQ(take(), Lines{"log 0 " + kBlock + " Interrupted"});
  turnMainQueue();
  EXPECT_EQ(take(), Lines{"handler NO, no items, NSCocoaErrorDomain 4097"});
  ASSERT_NE(lastError, nil);
  EXPECT_EQ([[lastError userInfo] count], 0u);
}

TEST_F(Host, WhoseRequestIsCancelledReportsTheRequestsErrorOnTheMainQueue) {
  [host viewWillAppear:NO];
  take();
  elsewhere(^{
    extension->cancelled(@"request", [NSError errorWithDomain:@"QVUser" code:1 userInfo:nil]);
  });
  EXPECT_EQ(take(), Lines{"log 0 " + kBlock + " Cancelled"});
  turnMainQueue();
  EXPECT_EQ(take(), Lines{"handler NO, no items, QVUser 1"});
}

TEST_F(Host, WhoseRequestIsCancelledWithoutAReasonReportsNoError) {
  [host viewWillAppear:NO];
  take();
  extension->cancelled(nil, nil);
  turnMainQueue();
  EXPECT_EQ(take(), (Lines{"log 0 " + kBlock + " Cancelled", "handler NO, no items, no error"}));
}

TEST_F(Host, WhoseRequestCompletesReportsTheReturnedItemsOnTheMainQueue) {
  [host viewWillAppear:NO];
  take();
  elsewhere(^{
    extension->completed(@"request", @[ @"answer" ]);
  });
  EXPECT_EQ(take(), Lines{"log 5 " + kBlock + " Completed"});
  turnMainQueue();
  EXPECT_EQ(take(), Lines{"handler YES, (answer), no error"});
}

TEST_F(Host, WhoseRequestCompletesWithNothingReportsSo) {
  [host viewWillAppear:NO];
  take();
  extension->completed(@"request", nil);
  turnMainQueue();
  EXPECT_EQ(take(), (Lines{"log 5 " + kBlock + " Completed", "handler YES, no items, no error"}));
}

TEST_F(Host, WhoseExtensionAnswersTwiceReportsTheFirstAnswerAlone) {
  [host viewWillAppear:NO];
  take();
  extension->completed(@"request", @[ @"first" ]);
  extension->completed(@"request", @[ @"second" ]);
  turnMainQueue();
  EXPECT_EQ(take(), (Lines{"log 5 " + kBlock + " Completed", "log 5 " + kBlock + " Completed",
                           "handler YES, (first), no error"}));
}

TEST_F(Host, WhoseExtensionDiesAfterItsAnswerReportsTheAnswerAlone) {
  [host viewWillAppear:NO];
  take();
  extension->completed(@"request", @[ @"answer" ]);
  turnMainQueue();
  extension->interrupted(@"request");
  turnMainQueue();
  EXPECT_EQ(take(), (Lines{"log 5 " + kBlock + " Completed", "handler YES, (answer), no error",
                           "log 0 " + kBlock + " Interrupted"}));
}

TEST_F(Host, ThatFailedAndAppearsAgainIsNotReportedTwice) {
  setFound(nil);
  [host viewWillAppear:NO];
  EXPECT_EQ(take().size(), 3u);
  [host viewWillAppear:NO];
  const Lines heard = take();
  ASSERT_EQ(heard.size(), 2u);
  EXPECT_TRUE(heard[1].starts_with("log 0 ")) << heard[1];
}

TEST_F(Host, ThatWasReleasedBeforeTheExtensionFinishesIsNotCalledBack) {
  NSAutoreleasePool *const pool = [[NSAutoreleasePool alloc] init];
  [host viewWillAppear:NO];
  take();
  [host release];
  host = nil;
  [pool drain];
  extension->interrupted(@"request");
  extension->cancelled(@"request", nil);
  extension->completed(@"request", @[ @"answer" ]);
  extension->connected(@"request", nil, nil);
  extension->connected(@"request", [[[UIViewController alloc] init] autorelease], nil);
  turnMainQueue();
  const Lines heard = take();
  EXPECT_EQ(heard.size(), 5u);
  for (const std::string &line : heard)
    EXPECT_TRUE(line.starts_with("log ")) << line;
}

TEST_F(Host, ThatIsReleasedWhileTheOutcomeIsOnItsWayIsNotCalledBack) {
  NSAutoreleasePool *const pool = [[NSAutoreleasePool alloc] init];
  [host viewWillAppear:NO];
  take();
  extension->completed(@"request", @[ @"answer" ]);
  [host release];
  host = nil;
  [pool drain];
  turnMainQueue();
  EXPECT_EQ(take(), Lines{"log 5 " + kBlock + " Completed"});
}

TEST_F(Host, KeepsTheExtensionAndIsNotKeptByIt) {
  NSAutoreleasePool *const pool = [[NSAutoreleasePool alloc] init];
  [host viewWillAppear:NO];
  setFound(nil);
  [extension release];
  EXPECT_EQ([QVTestExtension live], 1);
  [host release];
  host = nil;
  [pool drain];
  EXPECT_EQ([QVTestExtension live], 0);
  extension = nil;
}

TEST_F(Host, MayBeReleasedByTheHandlerThatItCalls) {
  setFound(nil);
  __block UIViewController<QVExtensionHost> *mortal = nil;
  mortal = [(id<QVExtensionHost>)[hostClass() alloc] initWithExtensionIdentifier:@"com.example.keypad"
                                                                      inputItems:@[ @"item" ]
                                                               completionHandler:^(BOOL, NSArray *, NSError *error) {
                                                                 [mortal release];
                                                                 mortal = nil;
                                                                 note("released, " + described(error));
                                                               }];
  take();
  [mortal viewWillAppear:NO];
  EXPECT_EQ(take().back(), "released, QVLookup 7");
  setFound(extension);
  mortal =
      [(id<QVExtensionHost>)[hostClass() alloc] initWithExtensionIdentifier:@"com.example.keypad"
                                                                 inputItems:@[ @"item" ]
                                                          completionHandler:^(BOOL, NSArray *items, NSError *) {
                                                            [mortal release];
                                                            mortal = nil;
                                                            note("released, " + support::text([items description]));
                                                          }];
  [mortal viewWillAppear:NO];
  extension->completed(@"request", @[ @"answer" ]);
  take();
  turnMainQueue();
  EXPECT_EQ(take(), Lines{"released, (answer)"});
}

TEST_F(Host, IsToldOnceWhenTheRequestEndsOnTwoThreadsAtOnce) {
  for (int round = 0; round < 50; ++round) {
    NSAutoreleasePool *const pool = [[NSAutoreleasePool alloc] init];
    std::atomic<int> told{0};
    std::atomic<int> *const counter = &told;
    UIViewController<QVExtensionHost> *const each =
        [[(id<QVExtensionHost>)[hostClass() alloc] initWithExtensionIdentifier:@"com.example.keypad"
                                                                    inputItems:@[ @"item" ]
                                                             completionHandler:^(BOOL, NSArray *, NSError *) {
                                                               ++*counter;
                                                             }] autorelease];
    [each viewWillAppear:NO];
    std::thread fails([&] {
      NSAutoreleasePool *const inner = [[NSAutoreleasePool alloc] init];
      extension->connected(@"request", nil, nil);
      [inner drain];
    });
    std::thread dies([&] {
      NSAutoreleasePool *const inner = [[NSAutoreleasePool alloc] init];
      extension->interrupted(@"request");
      [inner drain];
    });
    fails.join();
    dies.join();
    turnMainQueue();
    EXPECT_EQ(told, 1);
    [pool drain];
  }
}

TEST_F(Host, TellsItsSuperclassThatItAppearsBeforeItLooksForTheExtension) {
  replaceMethod([UIViewController class], "viewWillAppear:", reinterpret_cast<IMP>(+[](id self, SEL, BOOL animated) {
                  note(std::string(object_getClassName(self)) + " will appear" + (animated ? ", animated" : ""));
                }));
  const std::string appears = "QVSBApplicationExtensionViewController will appear";
  [host viewWillAppear:YES];
  EXPECT_EQ(take(), (Lines{appears + ", animated", kLaunch[0], kLaunch[1], kLaunch[2], kLaunch[3], kLaunch[4]}));
  [host viewWillAppear:NO];
  EXPECT_EQ(take(), Lines{appears});
}

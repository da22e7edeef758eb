#include "DelegateTest.h"

#import <Zorbel/Zorbel.h>

#include <objc/runtime.h>

#include <cstdarg>

#include "startup/methods.hpp"

namespace {

Lines events;
int liveSDKs = 0;
QVTestZorbel *sharedSDK = nil;

std::string text(id object) { return object ? [[object description] UTF8String] : "nil"; }

} // namespace

void note(const std::string &event) { events.push_back(event); }

Lines take() { return std::exchange(events, {}); }

std::string raisedBy(void (^block)()) {
  @try {
    block();
  } @catch (NSException *exception) {
    return [[exception reason] UTF8String];
  }
  return "";
}

@implementation QVTestZorbel

+ (int)live {
  return liveSDKs;
}

- (instancetype)init {
  if ((self = [super init])) {
    ++liveSDKs;
    name = new std::string("sdk");
  }
  return self;
}

- (void)dealloc {
  --liveSDKs;
  [config release];
  delete name;
  [super dealloc];
}

- (BOOL)isReady {
  return ready;
}

- (BOOL)isReadyToTerminate {
  return readyToTerminate;
}

- (BOOL)isCheckInRequested {
  return checkInRequested;
}

- (NSInteger)authState {
  return authState;
}

- (NSInteger)managedPolicy {
  return managedPolicy;
}

- (NSInteger)pasteboardPolicy {
  return pasteboardPolicy;
}

- (NSDictionary *)config {
  return config;
}

- (void)setZorbelDelegate:(id)newDelegate {
  delegate = newDelegate;
  note(*name + " setZorbelDelegate: " + text(NSStringFromClass([newDelegate class])));
  if (whenGivenADelegate) whenGivenADelegate(newDelegate);
}

- (void)startWithLaunchOptions:(NSDictionary *)options {
  note(*name + " startWithLaunchOptions: " + text([options objectForKey:@"key"]));
}

- (void)note:(const char *)what result:(NSInteger)result message:(NSString *)message {
  note(*name + " " + what + " " + std::to_string(result) + " message: " + text(message));
}

- (void)authStateApplied:(NSInteger)result message:(NSString *)message {
  [self note:"authStateApplied:" result:result message:message];
}

- (void)configApplied:(NSInteger)result message:(NSString *)message {
  [self note:"configApplied:" result:result message:message];
}

- (void)openInPolicyApplied:(NSInteger)result message:(NSString *)message {
  [self note:"openInPolicyApplied:" result:result message:message];
}

- (void)pasteboardPolicyApplied:(NSInteger)result message:(NSString *)message {
  [self note:"pasteboardPolicyApplied:" result:result message:message];
}

- (void)printPolicyApplied:(NSInteger)result message:(NSString *)message {
  [self note:"printPolicyApplied:" result:result message:message];
}

- (void)displayMessage:(NSString *)message {
  note(*name + " displayMessage: " + text(message));
}

- (void)willExit {
  note(*name + " willExit");
}

@end

@implementation QVTestHost

- (instancetype)init {
  if ((self = [super init])) {
    methods = [[NSMutableSet alloc] init];
    answerToLaunch = answerToURL = YES;
  }
  return self;
}

- (void)dealloc {
  [methods release];
  [super dealloc];
}

- (void)has:(NSString *)selectors, ... {
  va_list rest;
  va_start(rest, selectors);
  for (NSString *selector = selectors; selector; selector = va_arg(rest, NSString *))
    [methods addObject:selector];
  va_end(rest);
}

- (BOOL)respondsToSelector:(SEL)selector {
  if ([methods containsObject:NSStringFromSelector(selector)]) return YES;
  // What stands in the class is there for tests to choose from.
  return class_getInstanceMethod([NSObject class], selector) != nullptr;
}

- (void)note:(SEL)selector with:(const std::string &)arguments {
  NSString *const name = NSStringFromSelector(selector);
  note("host " + text(name) + " " + arguments);
  if (during) during();
  if ([name isEqualToString:raisesFrom]) [NSException raise:@"QVTest" format:@"the host's"];
}

- (NSString *)zorbelConfigIs:(NSDictionary *)config {
  [self note:_cmd with:config ? text([[config allKeys] componentsJoinedByString:@","]) : "nil"];
  return answerToConfigIs;
}

- (NSString *)zorbelConfigChangedTo:(NSDictionary *)config {
  [self note:_cmd with:text([[config allKeys] componentsJoinedByString:@","])];
  return answerToConfigChanged;
}

- (void)zorbelStateChangedTo:(int64_t)state {
  [self note:_cmd with:std::to_string(state)];
}

- (BOOL)application:(UIApplication *)application didFinishLaunchingWithOptions:(NSDictionary *)options {
  [self note:_cmd with:(application == [UIApplication sharedApplication] ? "app " : "other ") +
                       text([options objectForKey:@"key"])];
  return answerToLaunch;
}

- (void)applicationDidFinishLaunching:(UIApplication *)application {
  [self note:_cmd with:application == [UIApplication sharedApplication] ? "app" : "other"];
}

- (BOOL)application:(UIApplication *)application openURL:(NSURL *)url options:(NSDictionary *)options {
  NSArray *const keys = [[options allKeys] sortedArrayUsingSelector:@selector(compare:)];
  std::string arguments = application == [UIApplication sharedApplication] ? "app " : "other ";
  arguments += text(url);
  for (NSString *key in keys)
    arguments += " " + text(key) + "=" + text([options objectForKey:key]);
  [self note:_cmd with:arguments];
  return answerToURL;
}

- (BOOL)application:(UIApplication *)application
              openURL:(NSURL *)url
    sourceApplication:(NSString *)source
           annotation:(id)annotation {
  [self note:_cmd with:(application == [UIApplication sharedApplication] ? "app " : "other ") + text(url) + " " +
                       text(source) + " " + text(annotation)];
  return answerToURL;
}

- (BOOL)application:(UIApplication *)application handleOpenURL:(NSURL *)url {
  [self note:_cmd with:(application == [UIApplication sharedApplication] ? "app " : "other ") + text(url)];
  return answerToURL;
}

- (UIWindow *)window {
  return hostWindow;
}

@end

bool DelegateTest::captureIsOn = false;
BOOL DelegateTest::passcodeAnswer = NO;
bool DelegateTest::wipeRaises = false;

namespace {

void log(id, SEL, NSInteger level, NSString *format, ...) {
  va_list arguments;
  va_start(arguments, format);
  NSString *const line = [[[NSString alloc] initWithFormat:format arguments:arguments] autorelease];
  va_end(arguments);
  note("log " + std::to_string(level) + " " + text(line));
}

id answerSharedSDK(id, SEL) { return sharedSDK; }

void noteUtil(id, SEL selector) { note("util " + std::string(sel_getName(selector))); }

void (*setZorbel)(id, SEL, id) = nullptr;
void noteSetZorbel(id self, SEL selector, id zorbel) {
  note("util setZorbel: " + std::string(zorbel == sharedSDK ? "shared" : "?"));
  setZorbel(self, selector, zorbel);
}

void notePasteboard(id, SEL, NSNotification *notification) {
  note("util pasteboardContentChanged: " +
       std::string([notification object] == [UIPasteboard generalPasteboard] ? "" : "?"));
}

void replace(Class cls, const char *selector, IMP implementation) {
  const Method method = class_getInstanceMethod(cls, sel_registerName(selector));
  ASSERT_TRUE(method != nullptr) << selector;
  method_setImplementation(method, implementation);
}

void replaceOrAdd(Class cls, const char *selector, IMP implementation, const char *types) {
  if (!class_addMethod(cls, sel_registerName(selector), implementation, types)) replace(cls, selector, implementation);
}

} // namespace

/// What the fixture's doubles need of its switches.
struct DelegateTestSwitches : DelegateTest {
  static BOOL passcode(id, SEL selector) {
    note("util " + std::string(sel_getName(selector)));
    return passcodeAnswer;
  }
  static void wipe(id, SEL) {
    note("util wipeApplication");
    if (wipeRaises) [NSException raise:@"QVTest" format:@"the wipe's"];
  }
  static BOOL isStarted(id, SEL) { return captureIsOn; }
  static void start(id, SEL) {
    captureIsOn = true;
    note("capture started");
  }
  static void stop(id, SEL, BOOL preserve) {
    captureIsOn = false;
    note(preserve ? "capture stopped, file kept" : "capture stopped, file removed");
  }
};

namespace {

void replaceWhatTheDelegateCalls() {
  using Switches = DelegateTestSwitches;
  Class const sdkClass = object_getClass([Zorbel class]);
  replace(sdkClass, "wrapperLogAtLevel:format:", reinterpret_cast<IMP>(&log));
  replace(sdkClass, "sharedInstance", reinterpret_cast<IMP>(&answerSharedSDK));

  Class const util = NSClassFromString(@"ZorbelUtil");
  for (const char *selector : {"takeSnapshot", "restoreSnapshot", "startPasscodeExtension", "stopPasscodeExtension"})
    replace(util, selector, reinterpret_cast<IMP>(&noteUtil));
  for (const char *selector : {"isPasscodeExtensionActive", "canAppDisplayPasscodeExtension"})
    replace(util, selector, reinterpret_cast<IMP>(&Switches::passcode));
  setZorbel = reinterpret_cast<decltype(setZorbel)>(class_getMethodImplementation(util, @selector(setZorbel:)));
  replace(util, "setZorbel:", reinterpret_cast<IMP>(&noteSetZorbel));
  replace(util, "wipeApplication", reinterpret_cast<IMP>(&Switches::wipe));
  replace(util, "pasteboardContentChanged:", reinterpret_cast<IMP>(&notePasteboard));

  replace(NSClassFromString(@"QVZorbelDelegate"), "_applicationTerminate",
          reinterpret_cast<IMP>(+[](id, SEL) { note("terminate"); }));

  Class capture = NSClassFromString(@"SBLogHelper");
  if (!capture) {
    capture = objc_allocateClassPair([NSObject class], "SBLogHelper", 0);
    objc_registerClassPair(capture);
  }
  Class const meta = object_getClass(capture);
  replaceOrAdd(meta, "isLogInterceptionStarted", reinterpret_cast<IMP>(&Switches::isStarted), "C16@0:8");
  replaceOrAdd(meta, "startInterceptingLogs", reinterpret_cast<IMP>(&Switches::start), "v16@0:8");
  replaceOrAdd(meta, "stopInterceptingLogsPreservingFile:", reinterpret_cast<IMP>(&Switches::stop), "v20@0:8C16");
}

} // namespace

void DelegateTest::SetUp() {
  pool_ = [[NSAutoreleasePool alloc] init];
  static const bool once = [] {
    qvsb::addMethodsAndClasses();
    replaceWhatTheDelegateCalls();
    [[UIApplication alloc] init];
    return true;
  }();
  (void)once;
  host = [[QVTestHost alloc] init];
  [[UIApplication sharedApplication] setDelegate:host];
  makeSDK();
  delegate = make();
  [delegate setQvZorbel:sdk];
  captureIsOn = false;
  passcodeAnswer = NO;
  wipeRaises = false;
  events.clear();
}

void DelegateTest::TearDown() {
  if ([util() registeredForPasteboardChangeNotification]) [delegate zorbel:nil pasteboardPolicyChangedTo:1];
  [delegate release];
  delegate = nil;
  releaseSDK();
  [[UIApplication sharedApplication] setDelegate:nil];
  [host release];
  [pool_ drain];
}

Class DelegateTest::delegateClass() { return NSClassFromString(@"QVZorbelDelegate"); }

id<QVDelegateObject> DelegateTest::make() { return [[delegateClass() alloc] init]; }

id<QVPolicyObject> DelegateTest::util() { return [NSClassFromString(@"ZorbelUtil") instance]; }

bool DelegateTest::pasteboardIsWatched() {
  const Lines before = std::exchange(events, {});
  [[UIPasteboard generalPasteboard] setItems:[NSArray array]];
  const Lines heard = std::exchange(events, before);
  if (heard.empty()) return false;
  EXPECT_EQ(heard, Lines{"util pasteboardContentChanged: "});
  return true;
}

void DelegateTest::releaseSDK() {
  if (sharedSDK == sdk) sharedSDK = nil;
  [sdk release];
  sdk = nil;
}

void DelegateTest::makeSDK() { sharedSDK = sdk = [[QVTestZorbel alloc] init]; }

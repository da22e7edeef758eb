#include "ExtensionTest.h"

#include "device/core/RunLoop.h"
#include "startup/methods.hpp"

#include <Zorbel/Zorbel.h>
#include <objc/runtime.h>

#include <atomic>
#include <cstdarg>
#include <mutex>

@interface NSObject (QVExtensionTestPolicyObject)
+ (id)instance;
- (void)setZorbel:(id)zorbel;
@end

namespace {

std::mutex &notesLock() {
  static std::mutex &lock = *new std::mutex;
  return lock;
}
Lines notes;
int liveExtensions = 0;
QVTestExtension *found = nil;
UIApplicationState state = UIApplicationStateActive;
UIUserInterfaceIdiom idiom = UIUserInterfaceIdiomPhone;

void logLine(id, SEL, NSInteger level, NSString *format, ...) {
  NSAutoreleasePool *const pool = [[NSAutoreleasePool alloc] init];
  va_list arguments;
  va_start(arguments, format);
  NSString *const line = [[[NSString alloc] initWithFormat:format arguments:arguments] autorelease];
  va_end(arguments);
  note("log " + std::to_string(level) + " " + support::text(line));
  [pool drain];
}

UIApplicationState applicationState(id, SEL) { return state; }
UIUserInterfaceIdiom deviceIdiom(id, SEL) { return idiom; }

// Host and window controllers; an extension may let go of them on any thread.
std::atomic<int> allocated[2];
std::atomic<int> deallocated[2];
IMP allocations[2];
IMP deallocations[2];

template <int Which> id allocate(id self, SEL selector, NSZone *zone) {
  ++allocated[Which];
  return reinterpret_cast<id (*)(id, SEL, NSZone *)>(allocations[Which])(self, selector, zone);
}

template <int Which> void deallocate(id self, SEL selector) {
  ++deallocated[Which];
  reinterpret_cast<void (*)(id, SEL)>(deallocations[Which])(self, selector);
}

template <int Which> void countObjectsOf(Class cls) {
  Class const meta = object_getClass(cls);
  allocations[Which] = class_getMethodImplementation(meta, @selector(allocWithZone:));
  deallocations[Which] = class_getMethodImplementation(cls, @selector(dealloc));
  replaceMethod(meta, "allocWithZone:", reinterpret_cast<IMP>(&allocate<Which>));
  replaceMethod(cls, "dealloc", reinterpret_cast<IMP>(&deallocate<Which>));
}

id extensionWithIdentifier(id, SEL, NSString *identifier, NSError **error) {
  note("look for " + support::text(identifier));
  if (!found && error)
    *error = [NSError errorWithDomain:@"QVLookup" code:7
                             userInfo:@{NSLocalizedDescriptionKey : @"there is no such extension"}];
  return found;
}

} // namespace

void note(const std::string &line) {
  const std::lock_guard locked(notesLock());
  notes.push_back(line);
}

Lines take() {
  const std::lock_guard locked(notesLock());
  return std::exchange(notes, {});
}

void turnMainQueue() {
  for (int turn = 0; turn < 2; ++turn) {
    __block bool done = false;
    dispatch_async(dispatch_get_main_queue(), ^{
      done = true;
    });
    ASSERT_TRUE(runLoopUntil(^{
      return done;
    }));
  }
}

void replaceMethod(Class cls, const char *selector, IMP implementation) {
  const Method method = class_getInstanceMethod(cls, sel_registerName(selector));
  ASSERT_TRUE(method != nullptr) << selector;
  method_setImplementation(method, implementation);
}

std::string raisedBy(const std::function<void()> &body) {
  @try {
    body();
  } @catch (NSException *exception) {
    return support::text([exception name]) + ": " + support::text([exception reason]);
  }
  return "nothing";
}

@implementation QVTestSDK

- (instancetype)init {
  if ((self = [super init])) results = [[NSMutableArray alloc] init];
  return self;
}

- (void)dealloc {
  [appInfo release];
  [results release];
  [whenHanded release];
  [super dealloc];
}

- (BOOL)isReady {
  return NO;
}

- (NSDictionary *)getAppInfo {
  note("sdk getAppInfo");
  return appInfo;
}

- (BOOL)hasResults {
  const std::lock_guard locked(notesLock());
  return [results count] > 0;
}

- (void)postPasscodeExtensionResult:(NSDictionary *)result {
  note("sdk postPasscodeExtensionResult:");
  {
    const std::lock_guard locked(notesLock());
    [results addObject:result ? result : (id)[NSNull null]];
  }
  if (whenHanded) whenHanded();
}

@end

@implementation QVTestExtension

+ (int)live {
  return liveExtensions;
}

- (instancetype)init {
  if ((self = [super init])) ++liveExtensions;
  return self;
}

- (void)dealloc {
  --liveExtensions;
  [interrupted release];
  [cancelled release];
  [completed release];
  [connected release];
  [inputItems release];
  [whenAsked release];
  [super dealloc];
}

- (void)setRequestInterruptionBlock:(void (^)(id))block {
  note("set interruption");
  [interrupted autorelease];
  interrupted = [block copy];
}

- (void)setRequestCancellationBlock:(void (^)(id, NSError *))block {
  note("set cancellation");
  [cancelled autorelease];
  cancelled = [block copy];
}

- (void)setRequestCompletionBlock:(void (^)(id, NSArray *))block {
  note("set completion");
  [completed autorelease];
  completed = [block copy];
}

- (void)instantiateViewControllerWithInputItems:(NSArray *)items
                              connectionHandler:(void (^)(id, UIViewController *, NSError *))handler {
  note("instantiate");
  [inputItems autorelease];
  inputItems = [items retain];
  [connected autorelease];
  connected = [handler copy];
  if (whenAsked) whenAsked();
}

@end

@implementation QVTestController

- (BOOL)shouldAutorotate {
  return rotates;
}

- (NSUInteger)supportedInterfaceOrientations {
  return orientations;
}

- (void)viewWillAppear:(BOOL)animated {
  [super viewWillAppear:animated];
  note(name + " will appear");
}

- (void)viewDidDisappear:(BOOL)animated {
  [super viewDidDisappear:animated];
  note(name + " did disappear");
}

@end

void ExtensionTest::SetUp() {
  pool_ = [[NSAutoreleasePool alloc] init];
  static const bool once = [] {
    qvsb::addMethodsAndClasses();
    replaceMethod(object_getClass([Zorbel class]), "wrapperLogAtLevel:format:", reinterpret_cast<IMP>(&logLine));
    replaceMethod([UIApplication class], "applicationState", reinterpret_cast<IMP>(&applicationState));
    replaceMethod([UIDevice class], "userInterfaceIdiom", reinterpret_cast<IMP>(&deviceIdiom));
    [[UIApplication alloc] init];
    return true;
  }();
  (void)once;
  if (playsTheExtension())
    replaceMethod(object_getClass([NSExtension class]),
                  "extensionWithIdentifier:error:", reinterpret_cast<IMP>(&extensionWithIdentifier));
  setState(UIApplicationStateActive);
  setDevice(UIUserInterfaceIdiomPhone);
  setFound(nil);
  sdk = [[QVTestSDK alloc] init];
  sdk->appInfo = [@{
    @"PasscodeExtensionBundleId" : @"com.example.manager.passcode",
    @"PasscodeExtFKData" : [@"key material" dataUsingEncoding:NSUTF8StringEncoding],
    @"ActivityPasteboardKey" : @"pasteboard key",
    @"AppIconData" : [@"icon" dataUsingEncoding:NSUTF8StringEncoding],
  } retain];
  [[NSClassFromString(@"ZorbelUtil") instance] setZorbel:sdk];
  window = [show(UIWindowLevelNormal) retain];
  take();
}

void ExtensionTest::TearDown() {
  [manager() stop];
  turnMainQueue();
  [window release];
  [sdk release];
  [pool_ drain];
}

void ExtensionTest::expectRestored() {
  EXPECT_TRUE([window isKeyWindow]);
  EXPECT_EQ([window windowLevel], UIWindowLevelNormal);
  EXPECT_EQ([manager() isPasscodeExtensionActive], NO);
  EXPECT_TRUE([manager() extensionWindow] == nil || [[manager() extensionWindow] isHidden]);
  EXPECT_EQ([[manager() extensionWindow] rootViewController], nil);
  EXPECT_EQ([[[manager() extensionWindow] subviews] count], 0u);
  EXPECT_EQ([manager() windowViewController], nil);
}

void ExtensionTest::setState(UIApplicationState given) { state = given; }
void ExtensionTest::setDevice(UIUserInterfaceIdiom given) { idiom = given; }
void ExtensionTest::setFound(QVTestExtension *extension) { found = extension; }

void ExtensionTest::countControllers() {
  countObjectsOf<0>(hostClass());
  countObjectsOf<1>(windowControllerClass());
}
int ExtensionTest::liveControllers() { return countedControllers() - deallocated[0] - deallocated[1]; }
int ExtensionTest::countedControllers() { return allocated[0] + allocated[1]; }

UIWindow *ExtensionTest::show(CGFloat level) {
  UIWindow *const shown = [[[UIWindow alloc] initWithFrame:[[UIScreen mainScreen] bounds]] autorelease];
  [shown setWindowLevel:level];
  [shown makeKeyAndVisible];
  return shown;
}

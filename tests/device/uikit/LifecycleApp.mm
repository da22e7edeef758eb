// A small app that says what happens to it. How it behaves is told by its environment:
// LIFECYCLE_CLASS names the delegate class, LIFECYCLE_PRINCIPAL the application's class, LIFECYCLE_DO something to go
// wrong.

#import <UIKit/UIKit.h>

#include <dispatch/dispatch.h>

#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

void say(const std::string &what) {
  const char *const states[] = {"active", "inactive", "background"};
  std::printf("%s [%s]\n", what.c_str(), states[[[UIApplication sharedApplication] applicationState]]);
  std::fflush(stdout);
}

bool asked(const char *what) {
  const char *const todo = std::getenv("LIFECYCLE_DO");
  return todo && std::string(todo) == what;
}

NSString *fromEnvironment(const char *name) {
  const char *const value = std::getenv(name);
  return value ? [NSString stringWithUTF8String:value] : nil;
}

void showProtection() {
  NSFileManager *const manager = [NSFileManager defaultManager];
  NSString *const file = [NSTemporaryDirectory() stringByAppendingPathComponent:@"file"];
  NSString *const other = [NSTemporaryDirectory() stringByAppendingPathComponent:@"other"];
  [@"x" writeToFile:file atomically:YES encoding:NSUTF8StringEncoding error:NULL];
  NSDictionary *const attributes = [manager attributesOfItemAtPath:file error:NULL];
  NSString *const protection = [attributes valueForKey:NSFileProtectionKey];
  say(std::string("protection: ") + (protection ? [protection UTF8String] : "(none)") + ", " +
      std::to_string([attributes count]) + " attributes");
  for (NSString *each in @[ NSFileProtectionComplete, NSFileProtectionComplete, NSFileProtectionNone ])
    [manager setAttributes:@{NSFileProtectionKey : each} ofItemAtPath:file error:NULL];
  NSData *const data = [@"x" dataUsingEncoding:NSUTF8StringEncoding];
  [data writeToFile:other options:NSDataWritingAtomic | NSDataWritingFileProtectionNone error:NULL];
}

void showDevice() {
  UIDevice *const device = [UIDevice currentDevice];
  const CGSize screen = [[UIScreen mainScreen] bounds].size;
  NSString *const line = [NSString stringWithFormat:@"%@ %@ %@, idiom %ld, screen %g x %g", [device model],
                                                    [device systemName], [device systemVersion],
                                                    (long)[device userInterfaceIdiom], screen.width, screen.height];
  say([line UTF8String]);
}

} // namespace

@interface LifecycleWatcher : NSObject
@end

@implementation LifecycleWatcher
- (void)note:(NSNotification *)notification {
  say([[notification name] UTF8String]);
}
@end

@interface LifecycleDelegate : UIResponder <UIApplicationDelegate> {
  UIWindow *_window;
}
@end

@implementation LifecycleDelegate

@synthesize window = _window;

- (BOOL)application:(UIApplication *)application willFinishLaunchingWithOptions:(NSDictionary *)options {
  say(std::string("willFinishLaunching") + ([application delegate] == self ? "" : " without its delegate") +
      (options ? " with options" : ""));
  return YES;
}

- (BOOL)application:(UIApplication *)application didFinishLaunchingWithOptions:(NSDictionary *)options {
  (void)options;
  (void)application;
  say("didFinishLaunching");
  if (asked("protection")) showProtection();
  if (asked("device")) showDevice();
  if (asked("raise")) [NSException raise:@"LifecycleException" format:@"asked to %s", "raise"];
  if (asked("raise later")) [self performSelector:@selector(raiseNow) withObject:nil afterDelay:0];
  if (asked("timer"))
    [NSTimer scheduledTimerWithTimeInterval:0.01 target:self selector:@selector(tick:) userInfo:nil repeats:YES];
  if (asked("terminate")) [application performSelector:@selector(terminateWithSuccess) withObject:nil afterDelay:0];
  // After the launch, which would go on beside the end.
  if (asked("terminate elsewhere")) [self performSelector:@selector(terminateElsewhere) withObject:nil afterDelay:0];
  [self setWindow:[[[UIWindow alloc] initWithFrame:[[UIScreen mainScreen] bounds]] autorelease]];
  [_window setRootViewController:[[[UIViewController alloc] init] autorelease]];
  [_window makeKeyAndVisible];
  return YES;
}

- (void)tick:(NSTimer *)timer {
  static int ticks = 0;
  if (++ticks == 3) [timer invalidate];
  say("tick");
}

- (void)terminateElsewhere {
  dispatch_async(dispatch_get_global_queue(DISPATCH_QUEUE_PRIORITY_HIGH, 0), ^{
    [[UIApplication sharedApplication] performSelector:NSSelectorFromString(@"terminateWithSuccess")];
  });
}

- (void)raiseNow {
  [NSException raise:@"LifecycleException" format:@"asked to raise later"];
}

- (void)applicationDidBecomeActive:(UIApplication *)application {
  (void)application;
  say("applicationDidBecomeActive");
}

- (void)applicationWillResignActive:(UIApplication *)application {
  (void)application;
  say("applicationWillResignActive");
}

- (void)applicationDidEnterBackground:(UIApplication *)application {
  (void)application;
  say("applicationDidEnterBackground");
}

- (void)applicationWillEnterForeground:(UIApplication *)application {
  (void)application;
  say("applicationWillEnterForeground");
}

- (void)applicationWillTerminate:(UIApplication *)application {
  (void)application;
  say("applicationWillTerminate");
}

@end

// Implements nothing but the oldest of the launch methods.
@interface OldDelegate : NSObject <UIApplicationDelegate>
@end

@implementation OldDelegate
- (void)applicationDidFinishLaunching:(UIApplication *)application {
  say("applicationDidFinishLaunching");
  [application performSelector:@selector(terminateWithSuccess) withObject:nil afterDelay:0];
}
@end

@interface OwnApplication : UIApplication
@end

@implementation OwnApplication
- (void)sendEvent:(UIEvent *)event {
  [super sendEvent:event];
}
@end

int main(int argc, char *argv[]) {
  @autoreleasepool {
    LifecycleWatcher *const watcher = [[LifecycleWatcher alloc] init];
    for (NSString *name in @[
           UIApplicationDidFinishLaunchingNotification, UIApplicationDidBecomeActiveNotification,
           UIApplicationWillResignActiveNotification, UIApplicationDidEnterBackgroundNotification,
           UIApplicationWillEnterForegroundNotification, UIApplicationWillTerminateNotification
         ])
      [[NSNotificationCenter defaultCenter] addObserver:watcher selector:@selector(note:) name:name object:nil];
    NSString *const delegate = fromEnvironment("LIFECYCLE_CLASS");
    return UIApplicationMain(argc, argv, fromEnvironment("LIFECYCLE_PRINCIPAL"),
                             delegate ? delegate : @"LifecycleDelegate");
  }
}

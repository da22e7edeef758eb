// termination_host           ends the app as the SDK's delegate does, and says what happens, a line each
// termination_host gone      the same once the SDK has been released
// termination_host patient   the same where the platform's own way to end the app takes its time
#import <UIKit/UIKit.h>
#import <Zorbel/Zorbel.h>

#include <dispatch/dispatch.h>
#include <dlfcn.h>
#include <objc/runtime.h>
#include <unistd.h>

#include <cstdarg>
#include <cstdlib>
#include <cstring>
#include <string>

#include "startup/methods.hpp"

@interface NSObject (QVZorbelDelegate)
- (void)setQvZorbel:(id)sdk;
- (void)_applicationTerminate;
@end

namespace {

bool sdkIsGone = false;
pid_t mainThread = 0;

void say(const std::string &line) {
  const std::string whole = line + (gettid() == mainThread ? "" : " (other thread)") + "\n";
  if (::write(STDOUT_FILENO, whole.data(), whole.size()) < 0) std::abort();
}

void sayLogLine(id, SEL, NSInteger level, NSString *format, ...) {
  va_list arguments;
  va_start(arguments, format);
  NSString *const text = [[[NSString alloc] initWithFormat:format arguments:arguments] autorelease];
  va_end(arguments);
  say("log " + std::to_string(level) + " " + [text UTF8String]);
}

void restoreSnapshot(id, SEL) { say("pasteboard restored"); }

void terminateLater(id application, SEL) {
  say("terminateWithSuccess");
  [application performSelector:@selector(endAtLast) withObject:nil afterDelay:0.2];
}

} // namespace

/// A queue of the system's that is asked for is told by its priority.
extern "C" dispatch_queue_t dispatch_get_global_queue(long priority, unsigned long flags) {
  using Function = dispatch_queue_t (*)(long, unsigned long);
  static const Function actual = reinterpret_cast<Function>(::dlsym(RTLD_NEXT, "dispatch_get_global_queue"));
  say("global queue of priority " + std::to_string(priority));
  return actual(priority, flags);
}

@interface UIApplication (QVTestPatience)
- (void)endAtLast;
@end

@implementation UIApplication (QVTestPatience)
- (void)endAtLast {
  say("ended at last");
  std::exit(0);
}
@end

@interface QVTestExitingSDK : NSObject
@end

@implementation QVTestExitingSDK
- (void)willExit {
  say("sdk willExit");
}
@end

@interface QVTerminatingApp : NSObject <UIApplicationDelegate>
@end

@implementation QVTerminatingApp

- (BOOL)application:(UIApplication *)application didFinishLaunchingWithOptions:(NSDictionary *)options {
  (void)application, (void)options;
  QVTestExitingSDK *const sdk = [[QVTestExitingSDK alloc] init];
  id const delegate = [[NSClassFromString(@"QVZorbelDelegate") alloc] init];
  [delegate setQvZorbel:sdk];
  if (sdkIsGone) [sdk release];
  [delegate _applicationTerminate];
  // Nobody but what was put off holds the delegate now.
  [delegate release];
  // Whatever does not need the main thread has its time now: all that it takes on a busy machine, where it ends the
  // process; a moment where nothing may happen.
  const bool endsElsewhere = [[[UIDevice currentDevice] systemVersion] intValue] < 6;
  endsElsewhere ? (void)::sleep(20) : (void)::usleep(300000);
  say("launched");
  return YES;
}

- (void)applicationWillTerminate:(UIApplication *)application {
  (void)application;
  say("host applicationWillTerminate:");
}

@end

int main(int argc, char *argv[]) {
  NSAutoreleasePool *const pool = [[NSAutoreleasePool alloc] init];
  mainThread = gettid();
  sdkIsGone = argc > 1 && std::strcmp(argv[1], "gone") == 0;
  if (argc > 1 && std::strcmp(argv[1], "patient") == 0)
    class_addMethod([UIApplication class], sel_registerName("terminateWithSuccess"),
                    reinterpret_cast<IMP>(&terminateLater), "v16@0:8");
  std::atexit([] { say("exit"); });
  qvsb::addMethodsAndClasses();
  method_setImplementation(class_getClassMethod([Zorbel class], @selector(wrapperLogAtLevel:format:)),
                           reinterpret_cast<IMP>(&sayLogLine));
  method_setImplementation(
      class_getInstanceMethod(NSClassFromString(@"ZorbelUtil"), sel_registerName("restoreSnapshot")),
      reinterpret_cast<IMP>(&restoreSnapshot));
  const int status = UIApplicationMain(argc, argv, nil, @"QVTerminatingApp");
  [pool release];
  return status;
}

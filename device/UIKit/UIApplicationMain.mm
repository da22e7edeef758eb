#import <UIKit/UIApplication.h>

#import "Commands.h"
#import "Lifecycle.h"
#include "observation/Hooks.h"

namespace {

Class classNamed(NSString *name, NSString *role) {
  Class const found = NSClassFromString(name);
  if (!found)
    [NSException
         raise:NSInternalInconsistencyException
        format:@"Unable to instantiate the UIApplication %@ instance. No class named %@ is loaded.", role, name];
  return found;
}

UIApplication *makeApplication(NSString *principalClassName) {
  if (![principalClassName length])
    principalClassName = [[NSBundle mainBundle] objectForInfoDictionaryKey:@"NSPrincipalClass"];
  if (![principalClassName length]) return [[UIApplication alloc] init];
  Class const principal = classNamed(principalClassName, @"subclass");
  if (![principal isSubclassOfClass:[UIApplication class]])
    [NSException raise:NSInternalInconsistencyException
                format:@"Unable to instantiate the UIApplication subclass instance. %@ is not a UIApplication.",
                       principalClassName];
  return [[principal alloc] init];
}

void launch(NSString *principalClassName, NSString *delegateClassName) {
  NSAutoreleasePool *const pool = [[NSAutoreleasePool alloc] init];
  UIApplication *const application = makeApplication(principalClassName);
  // Nobody else keeps this delegate: it lives as long as the process. Without a class name the application object is
  // left to find a delegate of its own.
  if ([delegateClassName length]) [application setDelegate:[[classNamed(delegateClassName, @"delegate") alloc] init]];
  QVDeviceTakeLifecycleCommands(application);
  QVDeviceTakeInputCommands(application);
  QVDeviceTakeMenuCommands(application);
  QVDeviceTakeWindowCommands(application);
  QVDeviceTakeScreenCommand(application);
  [application qvdevice_launch];
  [pool release];
}

} // namespace

int UIApplicationMain(int argc, char *argv[], NSString *principalClassName, NSString *delegateClassName) {
  (void)argc;
  (void)argv;
  qvdevice::traceHooksLeftAlone();
  launch(principalClassName, delegateClassName);
  // A run loop that waits for nothing returns at once: the timer keeps it waiting.
  NSAutoreleasePool *pool = [[NSAutoreleasePool alloc] init];
  NSRunLoop *const loop = [NSRunLoop currentRunLoop];
  NSTimer *const never = [[NSTimer alloc] initWithFireDate:[NSDate distantFuture] interval:0 target:[NSNull null]
                                                  selector:@selector(description)
                                                  userInfo:nil
                                                   repeats:NO];
  [loop addTimer:never forMode:NSDefaultRunLoopMode];
  [never release];
  for (;;) {
    [loop runMode:NSDefaultRunLoopMode beforeDate:[NSDate distantFuture]];
    [pool release];
    pool = [[NSAutoreleasePool alloc] init];
  }
}

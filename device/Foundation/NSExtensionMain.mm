// The main program of an extension: it serves one request of one host, and goes when the host no longer needs it.

#import <Foundation/NSExtensionMain.h>

#import <UIKit/UIKit.h>

#include <fcntl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <thread>

#import "ExtensionMessages.h"
#import "UIKit/Commands.h"
#import "UIKit/ExtensionRoot.h"
#import "UIKit/Lifecycle.h"

#import "ServedContext.h"

#include "container/Json.h"
#include "container/Refusal.h"

using namespace qvdevice;

namespace {

/// The first message, which is waited for; the process ends without one.
NSDictionary *awaitBeginning(int channel) {
  MessageReader reader;
  std::array<char, 65536> buffer;
  for (;;) {
    NSDictionary *message = nil;
    switch (reader.next(&message)) {
    case MessageReader::Result::kMessage:
      if (![[message objectForKey:@"message"] isEqual:@"begin"] || !areExtensionItems([message objectForKey:@"items"]))
        refuse("the host's request is not understood");
      return message;
    case MessageReader::Result::kMalformed:
      refuse("the host's request is not understood");
    case MessageReader::Result::kMore:
      break;
    }
    const ssize_t length = ::recv(channel, buffer.data(), buffer.size(), 0);
    if (length < 0 && errno == EINTR) continue;
    if (length <= 0) ::_exit(EXIT_SUCCESS);
    reader.feed(buffer.data(), static_cast<std::size_t>(length));
  }
}

/// The host says nothing more; what there is to hear is that it has gone. Not on the main thread, which may be busy for
/// ever.
void goWithHost(int channel) {
  std::thread([channel] {
    std::array<char, 256> ignored;
    ssize_t length = 0;
    do {
      length = ::recv(channel, ignored.data(), ignored.size(), 0);
    } while (length > 0 || (length < 0 && errno == EINTR));
    ::_exit(EXIT_SUCCESS);
  }).detach();
}

NSString *principalClassName() {
  NSDictionary *const extension = [[NSBundle mainBundle] objectForInfoDictionaryKey:@"NSExtension"];
  id const name =
      [extension isKindOfClass:[NSDictionary class]] ? [extension objectForKey:@"NSExtensionPrincipalClass"] : nil;
  return [name isKindOfClass:[NSString class]] ? name : nil;
}

/// The extension's view controller; nil, with the reason, when it has none.
UIViewController *makeViewController(NSString **reason) {
  NSString *const name = principalClassName();
  Class const principal = name ? NSClassFromString(name) : Nil;
  if (![principal isSubclassOfClass:[UIViewController class]]) {
    *reason = [NSString stringWithFormat:@"its principal class %@ is no view controller", name];
    return nil;
  }
  UIViewController *const controller = [[principal alloc] init];
  if (!controller) *reason = [NSString stringWithFormat:@"its principal class %@ makes no view controller", name];
  return controller;
}

void serve(int channel, UIApplication *application) {
  NSAutoreleasePool *const pool = [[NSAutoreleasePool alloc] init];
  NSDictionary *const request = awaitBeginning(channel);
  QVDeviceServedContext *const context = [[QVDeviceServedContext alloc] initWithItems:[request objectForKey:@"items"]
                                                                              channel:channel];
  goWithHost(channel);
  NSString *reason = nil;
  UIViewController *const controller = makeViewController(&reason);
  if (!controller) {
    [context failBecause:reason];
  } else {
    QVDeviceSetExtensionRoot(controller, context);
    if ([controller respondsToSelector:@selector(beginRequestWithExtensionContext:)])
      [(id)controller beginRequestWithExtensionContext:context];
    UIWindow *const window = [[UIWindow alloc] initWithFrame:[[UIScreen mainScreen] bounds]];
    [window setRootViewController:controller];
    [application qvdevice_setState:UIApplicationStateActive];
    [window makeKeyAndVisible];
    QVDeviceTakeInputCommands(application);
    QVDeviceTakeScreenCommand(application);
    [context ready];
  }
  [pool release];
}

} // namespace

int NSExtensionMain(int argc, char *argv[]) {
  (void)argc;
  (void)argv;
  NSAutoreleasePool *pool = [[NSAutoreleasePool alloc] init];
  const int channel = descriptorFromEnvironment("QVDEVICE_EXTENSION_FD");
  if (channel < 0) refuse("an extension is started by the system, for an app; this one was started by hand");
  ::fcntl(channel, F_SETFD, FD_CLOEXEC);
  serve(channel, [[UIApplication alloc] init]);
  // A run loop that waits for nothing returns at once: the timer keeps it waiting.
  NSRunLoop *const loop = [NSRunLoop currentRunLoop];
  [loop addTimer:[NSTimer timerWithTimeInterval:1e9 target:[NSNull null] selector:@selector(description) userInfo:nil
                                        repeats:YES]
         forMode:NSDefaultRunLoopMode];
  for (;;) {
    [loop runMode:NSDefaultRunLoopMode beforeDate:[NSDate distantFuture]];
    [pool release];
    pool = [[NSAutoreleasePool alloc] init];
  }
}

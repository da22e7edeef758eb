// An extension that does what the request says under "do", in its user information.
#import <Foundation/NSExtensionMain.h>
#import <UIKit/UIKit.h>

#include <sys/socket.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <string>

/// A class that no host knows.
@interface Stranger : NSObject <NSCoding>
@end

@implementation Stranger
- (void)encodeWithCoder:(NSCoder *)coder {
  (void)coder;
}
- (id)initWithCoder:(NSCoder *)coder {
  (void)coder;
  return [self init];
}
@end

/// Of whom there is never an instance.
@interface ViewlessController : UIViewController
@end

@implementation ViewlessController
- (instancetype)init {
  [self release];
  return nil;
}
@end

@interface BehavingController : UIViewController
@end

@implementation BehavingController

- (NSString *)wanted {
  return [[[[[self extensionContext] inputItems] objectAtIndex:0] userInfo] objectForKey:@"do"];
}

- (void)sendRaw:(const std::string &)bytes {
  const int channel = std::atoi(std::getenv("QVDEVICE_EXTENSION_FD"));
  (void)!::send(channel, bytes.data(), bytes.size(), MSG_NOSIGNAL);
}

- (void)completeWith:(id)userInfo {
  NSExtensionItem *const item = [[[NSExtensionItem alloc] init] autorelease];
  [item setUserInfo:userInfo];
  [[self extensionContext] completeRequestReturningItems:@[ item ] completionHandler:nil];
}

- (void)viewDidLoad {
  NSString *const wanted = [self wanted];
  if ([wanted isEqual:@"crash while loading"]) std::abort();
  if ([wanted isEqual:@"hang while loading"]) ::pause();
  if ([wanted isEqual:@"answer while loading"]) [self completeWith:@{@"result" : @"TRUE"}];
  // Once the host has been told of the view controller.
  [self performSelector:@selector(act) withObject:nil afterDelay:0];
}

- (void)act {
  NSString *const wanted = [self wanted];
  NSExtensionContext *const context = [self extensionContext];
  if ([wanted isEqual:@"complete"]) {
    [self completeWith:@{@"result" : @"TRUE", @"ak" : @"a", @"sk" : [NSData dataWithBytes:"\0\1" length:2]}];
  } else if ([wanted isEqual:@"echo"]) {
    [context completeRequestReturningItems:[context inputItems] completionHandler:nil];
  } else if ([wanted isEqual:@"complete without items"]) {
    [context completeRequestReturningItems:nil completionHandler:nil];
  } else if ([wanted isEqual:@"complete twice"]) {
    [self completeWith:@{@"result" : @"FALSE"}];
    [self completeWith:@{@"result" : @"TRUE"}];
  } else if ([wanted isEqual:@"complete and cancel"]) {
    [self completeWith:@{@"result" : @"TRUE"}];
    [context cancelRequestWithError:nil];
  } else if ([wanted isEqual:@"complete and crash"]) {
    [self completeWith:@{@"result" : @"TRUE"}];
    std::abort();
  } else if ([wanted isEqual:@"complete and talk nonsense"]) {
    [self completeWith:@{@"result" : @"TRUE"}];
    [self sendRaw:std::string("\0\0\0\4nope", 8)];
  } else if ([wanted isEqual:@"cancel"]) {
    [context cancelRequestWithError:[NSError errorWithDomain:@"Trial" code:7 userInfo:@{
               NSLocalizedDescriptionKey : @"Not today",
               @"stranger" : [[[Stranger alloc] init] autorelease]
             }]];
  } else if ([wanted isEqual:@"cancel without a reason"]) {
    [context cancelRequestWithError:nil];
  } else if ([wanted isEqual:@"crash"]) {
    std::abort();
  } else if ([wanted isEqual:@"exit"]) {
    ::_exit(5);
  } else if ([wanted isEqual:@"hang"]) {
    for (;;)
      ::pause();
  } else if ([wanted isEqual:@"send no archive"]) {
    [self sendRaw:std::string("\0\0\0\4nope", 8)];
  } else if ([wanted isEqual:@"send an endless length"]) {
    [self sendRaw:"\xff\xff\xff\xff"];
  } else if ([wanted isEqual:@"send half a message"]) {
    [self sendRaw:std::string("\0\0\1\0half", 8)];
    ::_exit(0);
  } else if ([wanted isEqual:@"complete with texts"]) {
    [context completeRequestReturningItems:@[ @"text" ] completionHandler:nil];
  } else if ([wanted isEqual:@"complete with a text for information"]) {
    [self completeWith:(id) @"text"];
  } else if ([wanted isEqual:@"complete with a stranger"]) {
    [self completeWith:@{@"result" : [[[Stranger alloc] init] autorelease]}];
  } else if ([wanted isEqual:@"write outside"]) {
    NSString *const path = [[[[context inputItems] objectAtIndex:0] userInfo] objectForKey:@"path"];
    const bool written = static_cast<bool>(std::ofstream([path UTF8String]) << "text");
    const bool atHome = static_cast<bool>(
        std::ofstream([[NSHomeDirectory() stringByAppendingPathComponent:@"Documents/own"] UTF8String]) << "text");
    [self completeWith:@{
      @"outside" : [NSNumber numberWithBool:written],
      @"home" : [NSNumber numberWithBool:atHome],
      @"container" : NSHomeDirectory(),
      @"bundle" : [[NSBundle mainBundle] bundlePath],
      @"version" : [[UIDevice currentDevice] systemVersion]
    }];
  }
}

@end

int main(int argc, char *argv[]) { return NSExtensionMain(argc, argv); }

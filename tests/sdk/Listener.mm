// An app's worth of listening: takes commands until the last of them, "end", and says what the SDK's delegate hears.
#import <Foundation/Foundation.h>
#import <QVDevice/QVDevice.h>
#import <Zorbel/Zorbel.h>

#import "ListeningDelegate.h"

#include <cstdio>
#include <cstdlib>

int main() {
  NSAutoreleasePool *const pool = [[NSAutoreleasePool alloc] init];
  QVListeningDelegate *const delegate = [[QVListeningDelegate alloc] init];
  delegate->whenTold = [delegate] { std::puts(delegate->heard.back().c_str()); };
  delegate->able = std::getenv("LISTENER_ABLE") != nullptr;
  Zorbel *const sdk = [Zorbel initPrivateWithDelegate:nil version:@"1" swizzledMethods:nil];
  if (!std::getenv("LISTENER_DEAF")) [sdk setZorbelDelegate:delegate];
  QVDeviceSetControlHandler(@"end", ^NSString *(NSDictionary *) {
    std::printf("%d %ld\n", [sdk isReady], static_cast<long>([sdk printPolicy]));
    std::exit(EXIT_SUCCESS);
  });
  [[NSRunLoop currentRunLoop] run];
  [pool release];
}

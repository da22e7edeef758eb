// starter                says that it got as far as main
// starter trace          writes one trace event with a value of every kind
// starter trace-threads  writes a hundred events on each of four threads
// starter log            logs two lines with one NSLog
// starter raise          raises an exception that nobody catches
// starter trace-closed   writes an event that nobody can read any more
// starter bundle         tells what the main bundle answers, a line each
// starter write PATH     tries to write a file there and says how that went
// starter append PATH    the same at the end of one
// starter weak-to-the-dying  makes a weak reference to an object whose last reference is gone
// starter sync-on-main, sync-on-itself  wait for a queue that only they could run
// starter commands       does what it is told through the control socket until that is closed

#include <dispatch/dispatch.h>
#include <fcntl.h>
#include <objc/objc-arc.h>
#include <unistd.h>

#import <Foundation/Foundation.h>
#import <QVDevice/QVDevice.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <functional>
#include <map>
#include <string_view>
#include <thread>
#include <vector>

namespace {

void tryToWrite(const char *path, int how) {
  const int descriptor = ::open(path, O_WRONLY | O_CREAT | how, 0644);
  std::printf("%s\n", descriptor >= 0 ? "written" : std::strerror(errno));
  if (descriptor >= 0) ::close(descriptor);
}

void tell(NSString *text) { std::printf("%s\n", text == nil ? "nil" : [text UTF8String]); }

void tellOfTheBundle() {
  NSBundle *const bundle = [NSBundle mainBundle];
  tell([bundle bundlePath]);
  tell([bundle executablePath]);
  tell([bundle resourcePath]);
  tell([bundle bundleIdentifier]);
  tell([[bundle infoDictionary] objectForKey:@"CFBundleName"]);
  tell([bundle pathForResource:@"words" ofType:@"txt"]);
  tell([[NSProcessInfo processInfo] processName]);
}

void traceEveryKindOfValue() {
  QVDeviceTrace(@{
    @"kind" : @"test",
    @"text" : @"line\n\"quoted\" \u00e9",
    @"number" : [NSNumber numberWithInt:-3],
    @"double" : [NSNumber numberWithDouble:1.5],
    @"yes" : [NSNumber numberWithBool:YES],
    @"list" : @[ [NSNumber numberWithUnsignedLong:1], [NSNull null], @"two" ],
    @"inner" : @{@"key" : @"value"},
    @"other" : [NSURL URLWithString:@"scheme:rest"],
  });
}

void traceOnThreads() {
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i) {
    threads.emplace_back([] {
      GSRegisterCurrentThread();
      NSAutoreleasePool *const pool = [[NSAutoreleasePool alloc] init];
      NSString *const text = [@"" stringByPaddingToLength:500 withString:@"x" startingAtIndex:0];
      for (int event = 0; event < 100; ++event)
        QVDeviceTrace(@{@"kind" : @"test", @"text" : text});
      [pool release];
      GSUnregisterCurrentThread();
    });
  }
  for (std::thread &thread : threads)
    thread.join();
}

void traceToNobody() {
  std::array<int, 2> ends{};
  if (::pipe(ends.data()) != 0) return;
  ::dup2(ends[1], STDOUT_FILENO);
  ::close(ends[0]);
  QVDeviceTrace(@{@"kind" : @"test"});
}

void referToTheDying() {
  NSObject *const object = [[NSObject alloc] init];
  // As while the last -release is at work.
  reinterpret_cast<long *>(object)[-1] = -1;
  id place;
  objc_initWeak(&place, object);
}

void syncOnMain() {
  dispatch_sync(dispatch_get_main_queue(), ^{
                });
}

void syncOnItself() {
  dispatch_queue_t queue = dispatch_queue_create("serial", DISPATCH_QUEUE_SERIAL);
  dispatch_sync(queue, ^{
    dispatch_sync(queue, ^{
                  });
  });
}

void obeyCommands() {
  QVDeviceSetControlHandler(@"nothing", ^NSString *(NSDictionary *) {
    return nil;
  });
  QVDeviceSetControlHandler(@"complain", ^NSString *(NSDictionary *command) {
    return [@"complained about " stringByAppendingString:[command objectForKey:@"about"]];
  });
  QVDeviceSetControlHandler(@"result", ^NSString *(NSDictionary *command) {
    QVDeviceAnswer(@{@"about" : [command objectForKey:@"about"], @"lines" : @[ @1, [NSNull null] ]});
    return [command objectForKey:@"problem"];
  });
  QVDeviceSetControlHandler(@"thread", ^NSString *(NSDictionary *) {
    return [NSThread isMainThread] ? @"main" : @"another";
  });
  QVDeviceSetControlHandler(@"gone", ^NSString *(NSDictionary *) {
    return nil;
  });
  QVDeviceSetControlHandler(@"gone", nil);
  while (::fcntl(3, F_GETFD) >= 0) {
    [[NSRunLoop mainRunLoop] runMode:NSDefaultRunLoopMode beforeDate:[NSDate dateWithTimeIntervalSinceNow:0.1]];
  }
}

} // namespace

int main(int count, char **words) {
  NSAutoreleasePool *const pool = [[NSAutoreleasePool alloc] init];
  const std::map<std::string_view, std::function<void()>> deeds = {
      {"", [] { std::printf("started\n"); }},
      {"trace", traceEveryKindOfValue},
      {"trace-threads", traceOnThreads},
      {"trace-closed", traceToNobody},
      {"bundle", tellOfTheBundle},
      {"write", [words] { tryToWrite(words[2], O_TRUNC); }},
      {"append", [words] { tryToWrite(words[2], O_APPEND); }},
      {"log", [] { NSLog(@"first\nsecond"); }},
      {"raise", [] { [NSException raise:@"Odd" format:@"odd %d", 1]; }},
      {"weak-to-the-dying", referToTheDying},
      {"sync-on-main", syncOnMain},
      {"sync-on-itself", syncOnItself},
      {"commands", obeyCommands},
  };
  deeds.at(count > 1 ? words[1] : "")();
  [pool release];
  return 0;
}

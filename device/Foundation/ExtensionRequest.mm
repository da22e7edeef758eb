#import "ExtensionRequest.h"

#import <QVDevice/QVDevice.h>
#import <dispatch/dispatch.h>
#import <objc/objc-arc.h>

#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <condition_variable>
#include <mutex>
#include <thread>

#import "ExtensionMessages.h"
#import "UIKit/UIRemoteViewController.h"

#include "Foundation/ExtensionProcess.h"

using namespace qvdevice;

typedef void (^ConnectionHandler)(id<NSCopying>, UIViewController *, NSError *);

/// What the thread of the request and those who end it have in common.
struct QVDeviceExtensionState {
  std::mutex lock;
  bool over = false;    // nobody wants to be told anything any more
  bool asking = false;  // the main thread has yet to end the turn in which the request was made
  bool showing = false; // the main thread has yet to hand out the view controller
  std::condition_variable changed;
  ExtensionProcess process;
  // The thread's own.
  enum class Phase { kStarting, kShown, kAnswered } phase = Phase::kStarting;
  ConnectionHandler handler = nil;
};

namespace {

using Phase = QVDeviceExtensionState::Phase;

/// How long the system may take to say how a process ended that has closed its socket.
constexpr int kMillisecondsForTheReason = 1000;

NSString *stringFrom(const std::string &text) { return [NSString stringWithUTF8String:text.c_str()]; }

NSError *interrupted(NSString *reason) {
  NSString *const description =
      [NSString stringWithFormat:@"The connection to the extension was interrupted: %@.", reason];
  return [NSError errorWithDomain:NSCocoaErrorDomain code:4097 userInfo:@{NSLocalizedDescriptionKey : description}];
}

NSError *withoutReason() {
  return [NSError errorWithDomain:NSExtensionErrorDomain code:NSExtensionCancelledError
                         userInfo:@{NSLocalizedDescriptionKey : @"The extension cancelled the request."}];
}

NSError *notStarted(const std::string &reason) {
  NSString *const description = [NSString stringWithFormat:@"The extension cannot be started: %@.", stringFrom(reason)];
  return [NSError errorWithDomain:NSExtensionErrorDomain code:NSExtensionViewControllerError
                         userInfo:@{NSLocalizedDescriptionKey : description}];
}

} // namespace

@implementation QVDeviceExtensionRequest

- (instancetype)initWithExtension:(NSExtension *)extension {
  if ((self = [super init])) {
    _identifier = [[NSUUID alloc] init];
    _extensionIdentifier = [[extension identifier] copy];
    _state = new QVDeviceExtensionState;
    objc_storeWeak(&_extension, extension);
  }
  return self;
}

- (void)dealloc {
  objc_storeWeak(&_extension, nil);
  delete _state;
  [_identifier release];
  [_extensionIdentifier release];
  [super dealloc];
}

@synthesize identifier = _identifier;

- (int)pid {
  const std::lock_guard locked(_state->lock);
  return _state->process.pid;
}

- (void)end {
  const std::lock_guard locked(_state->lock);
  _state->over = true;
  _state->changed.notify_all();
  // The thread wakes, and closes them.
  for (const int descriptor : {_state->process.channel, _state->process.connection})
    if (descriptor >= 0) ::shutdown(descriptor, SHUT_RDWR);
}

- (void)startWithMessage:(NSData *)message connectionHandler:(ConnectionHandler)handler {
  _state->handler = [handler copy];
  _state->asking = true;
  dispatch_async(dispatch_get_main_queue(), ^{
    [self mainThreadHasDone:&QVDeviceExtensionState::asking];
  });
  [self retain];
  [message retain];
  std::thread([self, message] {
    GSRegisterCurrentThread();
    NSAutoreleasePool *const pool = [[NSAutoreleasePool alloc] init];
    [self runWithMessage:message];
    [message release];
    [pool release];
    [self release];
    GSUnregisterCurrentThread();
  }).detach();
}

- (void)note:(NSString *)event reason:(NSString *)reason {
  NSMutableDictionary *const record = [NSMutableDictionary dictionary];
  [record addEntriesFromDictionary:@{@"kind" : @"extension", @"event" : event, @"identifier" : _extensionIdentifier}];
  if (reason) [record setObject:reason forKey:@"reason"];
  QVDeviceTrace(record);
}

/// However quick the extension was, a host has done with showing that it asked before it hears that this failed, and
/// has the view controller before it hears how the request ended.
- (void)awaitMainThread {
  std::unique_lock locked(_state->lock);
  _state->changed.wait(locked, [self] { return (!_state->asking && !_state->showing) || _state->over; });
}

- (void)mainThreadHasDone:(bool QVDeviceExtensionState::*)what {
  const std::lock_guard locked(_state->lock);
  _state->*what = false;
  _state->changed.notify_all();
}

/// Calls back on behalf of the extension's owner, unless there is none any more.
- (void)tell:(void (^)(NSExtension *extension))callBack {
  {
    const std::lock_guard locked(_state->lock);
    if (_state->over) return;
  }
  NSExtension *const extension = objc_loadWeakRetained(&_extension);
  if (extension) callBack(extension);
  [extension release];
}

- (void)forgetHandler {
  [_state->handler release];
  _state->handler = nil;
}

- (void)failWithError:(NSError *)error {
  [self note:@"failed" reason:[error localizedDescription]];
  [self awaitMainThread];
  [self tell:^(NSExtension *) {
    if (_state->handler) _state->handler(_identifier, nil, error);
  }];
}

- (void)runWithMessage:(NSData *)message {
  ExtensionProcess process;
  std::string error;
  if (!startExtension([_extensionIdentifier UTF8String], process, error)) {
    [self failWithError:notStarted(error)];
  } else {
    bool wanted = false;
    {
      const std::lock_guard locked(_state->lock);
      wanted = !_state->over;
      _state->process = process;
    }
    if (wanted) {
      [self note:@"started" reason:nil];
      // A process that has gone before it has read all is found out below.
      sendBytes(process.channel, message);
      [self listenTo:process];
    }
    const std::lock_guard locked(_state->lock);
    _state->process = {};
    ::close(process.channel);
    ::close(process.connection);
  }
  [self forgetHandler];
}

/// Until the process has gone, has said something that nobody understands, or is no longer wanted.
- (void)listenTo:(const ExtensionProcess &)process {
  MessageReader reader;
  std::array<char, 65536> buffer;
  for (;;) {
    std::array<pollfd, 2> ready{{{process.channel, POLLIN, 0}, {process.connection, POLLIN, 0}}};
    if (::poll(ready.data(), ready.size(), -1) < 0 && errno == EINTR) continue;
    ssize_t length = 0;
    if (ready[0].revents != 0) {
      length = ::recv(process.channel, buffer.data(), buffer.size(), 0);
      if (length < 0 && errno == EINTR) continue;
    }
    if (length <= 0) {
      [self lostBecause:[self howEnded:process]];
      return;
    }
    NSAutoreleasePool *const pool = [[NSAutoreleasePool alloc] init];
    reader.feed(buffer.data(), static_cast<std::size_t>(length));
    const bool understood = [self takeMessagesFrom:reader];
    if (!understood) [self lostBecause:@"it said something that is not understood"];
    [pool release];
    if (!understood) return;
  }
}

- (NSString *)howEnded:(const ExtensionProcess &)process {
  pollfd ready{process.connection, POLLIN, 0};
  const std::string how =
      ::poll(&ready, 1, kMillisecondsForTheReason) > 0 ? howExtensionEnded(process.connection) : std::string();
  return how.empty() ? @"it no longer answers" : stringFrom("its process ended " + how);
}

- (BOOL)takeMessagesFrom:(MessageReader &)reader {
  for (;;) {
    NSDictionary *message = nil;
    switch (reader.next(&message)) {
    case MessageReader::Result::kMore:
      return YES;
    case MessageReader::Result::kMalformed:
      return NO;
    case MessageReader::Result::kMessage:
      if (![self take:message]) return NO;
    }
  }
}

/// NO for a message that has no place here.
- (BOOL)take:(NSDictionary *)message {
  NSString *const name = [message objectForKey:@"message"];
  id const items = [message objectForKey:@"items"];
  id const error = [message objectForKey:@"error"];
  if (error && ![error isKindOfClass:[NSError class]]) return NO;
  const bool starting = _state->phase == Phase::kStarting;
  if ([name isEqual:@"ready"] && starting) {
    [self show];
  } else if ([name isEqual:@"failed"] && starting && error) {
    _state->phase = Phase::kAnswered;
    [self failWithError:error];
  } else if ([name isEqual:@"completed"] && areExtensionItems(items)) {
    [self answered:@"completed" callBack:^(NSExtension *extension) {
      if (void (^const block)(id, NSArray *) = [extension requestCompletionBlock]) block(_identifier, items);
    }];
  } else if ([name isEqual:@"cancelled"]) {
    [self answered:@"cancelled" callBack:^(NSExtension *extension) {
      if (void (^const block)(id, NSError *) = [extension requestCancellationBlock])
        block(_identifier, error ? error : withoutReason());
    }];
  } else {
    return [name isEqual:@"ready"] && _state->phase == Phase::kAnswered;
  }
  return YES;
}

- (void)show {
  _state->phase = Phase::kShown;
  [self note:@"shown" reason:nil];
  {
    const std::lock_guard locked(_state->lock);
    _state->showing = true;
  }
  // Views belong to the main thread.
  ConnectionHandler const handler = _state->handler;
  dispatch_async(dispatch_get_main_queue(), ^{
    [self tell:^(NSExtension *) {
      UIViewController *const controller = [[_UIRemoteViewController alloc] initWithRequest:self];
      if (handler) handler(_identifier, controller, nil);
      [controller release];
    }];
    [self mainThreadHasDone:&QVDeviceExtensionState::showing];
  });
}

- (void)answered:(NSString *)how callBack:(void (^)(NSExtension *extension))callBack {
  if (_state->phase == Phase::kAnswered) {
    NSLog(@"The extension %@ has answered its request already; that it has %@ it is ignored", _extensionIdentifier,
          how);
    [self note:@"ignored" reason:nil];
    return;
  }
  _state->phase = Phase::kAnswered;
  [self note:how reason:nil];
  [self awaitMainThread];
  [self tell:callBack];
}

- (void)lostBecause:(NSString *)reason {
  bool wanted = false;
  {
    const std::lock_guard locked(_state->lock);
    wanted = !_state->over;
  }
  if (!wanted || _state->phase == Phase::kAnswered) {
    [self note:@"ended" reason:nil];
  } else if (_state->phase == Phase::kStarting) {
    [self failWithError:interrupted(reason)];
  } else {
    [self note:@"interrupted" reason:reason];
    [self awaitMainThread];
    [self tell:^(NSExtension *extension) {
      if (void (^const block)(id<NSCopying>) = [extension requestInterruptionBlock]) block(_identifier);
    }];
  }
}

@end

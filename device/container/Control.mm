// Commands from whoever runs the app: one JSON object a line, handled on the main run loop in order, each answered by
// one.

#include <fcntl.h>
#include <sys/socket.h>
#include <unistd.h>

#import <Foundation/Foundation.h>
#import <QVDevice/QVDevice.h>

#include <cerrno>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

#include "container/Json.h"

namespace {

using namespace qvdevice;
using Json = nlohmann::json;

constexpr std::size_t kLongestLine = std::size_t{1} << 20;

NSMutableDictionary *handlers() {
  static NSMutableDictionary *const all = [[NSMutableDictionary alloc] init];
  return all;
}

/// What the handler that runs now lets its answer carry.
NSDictionary *result = nil;

/// Does what one line asks for and answers an empty text, or what was wrong with it.
std::string carryOut(const std::string &line) {
  const Json command = Json::parse(line, nullptr, false);
  if (command.is_discarded()) return "not JSON";
  if (!command.is_object()) return "not a JSON object";
  const auto verb = command.find("do");
  if (verb == command.end() || !verb->is_string()) return "\"do\" must name what to do";
  QVDeviceControlHandler const handler = [handlers() objectForKey:objectFrom(*verb)];
  if (handler == nil) return "nothing is known by the name \"" + verb->get<std::string>() + "\"";
  NSString *const problem = handler(objectFrom(command));
  return problem == nil ? std::string() : std::string([problem UTF8String]);
}

} // namespace

@interface QVDeviceControlReader : NSObject <RunLoopEvents> {
  int descriptor_;
  std::string *received_;
}
@end

@implementation QVDeviceControlReader

+ (void)load {
  const int descriptor = descriptorFromEnvironment("QVDEVICE_CONTROL_FD");
  if (descriptor < 0) return;
  NSAutoreleasePool *const pool = [[NSAutoreleasePool alloc] init];
  // Not for the app's children.
  ::fcntl(descriptor, F_SETFD, FD_CLOEXEC);
  QVDeviceControlReader *const reader = [[[QVDeviceControlReader alloc] init] autorelease];
  reader->descriptor_ = descriptor;
  reader->received_ = new std::string;
  // The run loop keeps its watchers only as long as they are its own: this one ends with the socket.
  [reader retain];
  [[NSRunLoop currentRunLoop] addEvent:[reader eventData] type:ET_RDESC watcher:reader forMode:NSDefaultRunLoopMode];
  [pool release];
}

- (void *)eventData {
  return reinterpret_cast<void *>(static_cast<std::intptr_t>(descriptor_));
}

- (void)receivedEvent:(void *)data type:(RunLoopEventType)type extra:(void *)extra forMode:(NSString *)mode {
  (void)data, (void)type, (void)extra, (void)mode;
  char buffer[4096];
  const ssize_t length = ::recv(descriptor_, buffer, sizeof buffer, MSG_DONTWAIT);
  if (length < 0 && (errno == EAGAIN || errno == EINTR)) return;
  if (length <= 0) {
    [self stop];
    return;
  }
  received_->append(buffer, static_cast<std::size_t>(length));
  for (std::size_t end = received_->find('\n'); end != std::string::npos; end = received_->find('\n')) {
    const std::string line = received_->substr(0, end);
    received_->erase(0, end + 1);
    [self answer:carryOut(line)];
  }
  if (received_->size() > kLongestLine) {
    [self answer:"the line is too long"];
    [self stop];
  }
}

- (void)answer:(const std::string &)problem {
  Json answer = problem.empty() ? Json{{"ok", true}} : Json{{"ok", false}, {"error", problem}};
  if (problem.empty() && result != nil) answer["result"] = jsonFrom(result);
  [result release];
  result = nil;
  const std::string line = answer.dump(-1, ' ', false, Json::error_handler_t::replace) + "\n";
  // Whoever asked may be gone; that is no reason to end the app.
  for (std::string_view rest = line; !rest.empty();) {
    const ssize_t sent = ::send(descriptor_, rest.data(), rest.size(), MSG_NOSIGNAL);
    if (sent < 0 && errno == EINTR) continue;
    if (sent <= 0) break;
    rest.remove_prefix(static_cast<std::size_t>(sent));
  }
}

- (void)stop {
  [[NSRunLoop currentRunLoop] removeEvent:[self eventData] type:ET_RDESC forMode:NSDefaultRunLoopMode all:YES];
  ::close(descriptor_);
  delete received_;
  received_ = nullptr;
  [self autorelease];
}

@end

void QVDeviceAnswer(NSDictionary *given) {
  [given retain];
  [result release];
  result = given;
}

void QVDeviceSetControlHandler(NSString *verb, QVDeviceControlHandler handler) {
  if (handler == nil) {
    [handlers() removeObjectForKey:verb];
    return;
  }
  QVDeviceControlHandler const copy = [handler copy];
  [handlers() setObject:copy forKey:verb];
  [copy release];
}

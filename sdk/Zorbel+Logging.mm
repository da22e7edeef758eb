#import <Zorbel/Zorbel.h>

#import <QVDevice/QVDevice.h>

#include <atomic>
#include <chrono>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <mutex>
#include <string>

#import "CallRecord.h"
#include "LogFile.h"

namespace {

std::atomic<bool> fileSuspended{false};

std::string utf8(NSString *text) {
  // Not UTF8String: a log line with half a character in it is still to be logged.
  NSData *const data = [text dataUsingEncoding:NSUTF8StringEncoding allowLossyConversion:YES];
  return std::string(static_cast<const char *>([data bytes]), [data length]);
}

std::string now() {
  using namespace std::chrono;
  const auto time = floor<milliseconds>(system_clock::now());
  const std::time_t whole = system_clock::to_time_t(time);
  std::tm parts{};
  gmtime_r(&whole, &parts);
  char text[40];
  const std::size_t length = std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%S", &parts);
  std::snprintf(text + length, sizeof text - length, ".%03dZ",
                static_cast<int>(time.time_since_epoch().count() % 1000));
  return text;
}

zorbel::LogFile &logFile() {
  static zorbel::LogFile &file = *new zorbel::LogFile(
      utf8([QVDeviceContainer() stringByAppendingPathComponent:@"Library/Logs/Zorbel/zorbel.log"]));
  return file;
}

/// Whoever follows the trace shows the lines; they would stand there twice.
bool consoleIsFollowed() {
  const char *descriptor = std::getenv("QVDEVICE_TRACE_FD");
  return descriptor != nullptr && *descriptor != '\0';
}

void log(NSInteger level, NSString *text) {
  static std::mutex &lock = *new std::mutex;
  // The order is the same in the file, on the console and in the trace.
  const std::lock_guard locked(lock);
  const std::string line = now() + " " + std::to_string(level) + " " + utf8(text) + "\n";
  if (!fileSuspended) logFile().append(line);
  if (!consoleIsFollowed()) {
    zorbel::writeToConsole(line);
  }
  QVDeviceTrace(@{@"kind" : @"log", @"level" : [NSNumber numberWithInteger:level], @"text" : text});
}

} // namespace

@implementation Zorbel (Logging)

+ (void)wrapperLogAtLevel:(NSInteger)level format:(NSString *)format, ... {
  // The first lines come before the app has a pool of its own.
  NSAutoreleasePool *const pool = [[NSAutoreleasePool alloc] init];
  va_list arguments;
  va_start(arguments, format);
  NSString *const text =
      format ? [[[NSString alloc] initWithFormat:format arguments:arguments] autorelease] : @"(null)";
  va_end(arguments);
  log(level, text);
  [pool release];
}

+ (void)setLoggingToFileSuspended:(BOOL)suspended {
  fileSuspended = suspended;
  QVDeviceRecordCall(NSStringFromSelector(_cmd), @{@"suspended" : [NSNumber numberWithBool:suspended]});
}

@end

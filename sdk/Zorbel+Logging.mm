#import <Zorbel/Zorbel.h>

#import <QVDevice/QVDevice.h>

#include <objc/objc-arc.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdarg>
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
  return {static_cast<const char *>([data bytes]), [data length]};
}

/// Appends the text in UTF-8. Most lines are ASCII that Foundation keeps in Latin-1, and need no more than a copy.
void append(std::string &line, NSString *text) {
  const std::size_t before = line.size();
  const NSUInteger length = [text length];
  if ([text fastestEncoding] == NSISOLatin1StringEncoding) {
    line.resize(before + length + 1);
    if ([text getCString:line.data() + before maxLength:length + 1 encoding:NSISOLatin1StringEncoding]) {
      line.resize(before + length);
      // A zero may have ended the copy early.
      if (std::ranges::all_of(line.begin() + static_cast<std::ptrdiff_t>(before), line.end(),
                              [](char byte) { return byte > 0; }))
        return;
    }
    line.resize(before);
  }
  line += utf8(text);
}

/// Stamps lines with the time. A line more in the same second, of which a wipe has thousands, has the same date.
class Clock {
public:
  void appendTo(std::string &line) {
    using namespace std::chrono;
    const auto time = floor<milliseconds>(system_clock::now());
    const std::time_t second = system_clock::to_time_t(floor<seconds>(time));
    if (second != second_) {
      std::tm parts{};
      gmtime_r(&second, &parts);
      length_ = std::strftime(text_, sizeof text_, "%Y-%m-%dT%H:%M:%S.", &parts);
      second_ = second;
    }
    const int milliseconds = static_cast<int>((time - floor<seconds>(time)).count());
    line.append(text_, length_);
    line += static_cast<char>('0' + milliseconds / 100);
    line += static_cast<char>('0' + milliseconds / 10 % 10);
    line += static_cast<char>('0' + milliseconds % 10);
    line += 'Z';
  }

private:
  std::time_t second_ = -1;
  char text_[40] = {};
  std::size_t length_ = 0;
};

zorbel::LogFile &logFile() {
  static zorbel::LogFile &file = *new zorbel::LogFile(
      utf8([QVDeviceContainer() stringByAppendingPathComponent:@"Library/Logs/Zorbel/zorbel.log"]));
  return file;
}

void log(NSInteger level, NSString *text) {
  static std::mutex &lock = *new std::mutex;
  static Clock clock;
  // The order is the same in the file, on the console and in the trace.
  const std::lock_guard locked(lock);
  static std::string &line = *new std::string;
  line.clear();
  clock.appendTo(line);
  line += ' ';
  line += std::to_string(level);
  line += ' ';
  append(line, text);
  line += '\n';
  if (!fileSuspended) logFile().append(line);
  // Whoever follows the trace shows the lines; they would stand there twice.
  if (QVDeviceIsTraced()) {
    QVDeviceTrace(@{@"kind" : @"log", @"level" : [NSNumber numberWithInteger:level], @"text" : text});
  } else {
    zorbel::writeToConsole(line);
  }
}

} // namespace

@implementation Zorbel (Logging)

+ (void)wrapperLogAtLevel:(NSInteger)level format:(NSString *)format, ... {
  // The first lines come before the app has a pool of its own.
  void *const pool = objc_autoreleasePoolPush();
  // Debian's runtime would look it up by its name for each line.
  static Class const string = [NSString class];
  va_list arguments;
  va_start(arguments, format);
  NSString *const text = format ? [[[string alloc] initWithFormat:format arguments:arguments] autorelease] : @"(null)";
  va_end(arguments);
  log(level, text);
  objc_autoreleasePoolPop(pool);
}

+ (void)setLoggingToFileSuspended:(BOOL)suspended {
  fileSuspended = suspended;
  QVDeviceRecordCall(NSStringFromSelector(_cmd), @{@"suspended" : [NSNumber numberWithBool:suspended]});
}

@end

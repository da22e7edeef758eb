#include "Log.hpp"

#import <Foundation/Foundation.h>

#include <objc/runtime.h>

#include <fstream>
#include <regex>
#include <sstream>

@interface NSObject (SBLogHelper)
+ (void)stopInterceptingLogsPreservingFile:(BOOL)preserving;
@end

// A test program that is linked with the library has had its standard error captured by now, and the SDK writes no log
// file of its own meanwhile. Both are for the tester; the capture has tests of its own, in processes of their own.
@interface QVTestersOutput : NSObject
@end
@implementation QVTestersOutput
+ (void)load {
  NSAutoreleasePool *const pool = [[NSAutoreleasePool alloc] init];
  [objc_getClass("SBLogHelper") stopInterceptingLogsPreservingFile:NO];
  [pool drain];
}
@end

namespace support {
namespace {

// The SDK's own log file: what a person would read, and nothing that only tests can see.
std::string path() {
  return std::string(
      [[NSHomeDirectory() stringByAppendingPathComponent:@"Library/Logs/Zorbel/zorbel.log"] fileSystemRepresentation]);
}

std::streamoff start = 0;

} // namespace

void clearLog() {
  std::ifstream file(path(), std::ios::ate);
  start = file ? static_cast<std::streamoff>(file.tellg()) : 0;
}

std::vector<std::string> log() {
  std::ifstream file(path());
  file.seekg(start);
  // "time level text"; a line without them belongs to the text before it.
  static const std::regex form("^[0-9][0-9:.TZ-]*(?: [0-9:.]+)? ([0-9]) ([^\\0]*)$");
  std::vector<std::string> lines;
  for (std::string line; std::getline(file, line);) {
    std::smatch parts;
    if (std::regex_match(line, parts, form)) {
      lines.push_back(parts[1].str() + " " + parts[2].str());
    } else if (!lines.empty()) {
      lines.back() += "\n" + line;
    }
  }
  return lines;
}

std::vector<std::string> log(int level) {
  std::vector<std::string> lines;
  for (const std::string &line : log()) {
    if (line.starts_with(std::to_string(level) + " ")) lines.push_back(line);
  }
  return lines;
}

} // namespace support

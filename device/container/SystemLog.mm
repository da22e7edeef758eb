#include "container/SystemLog.h"

#include <sys/stat.h>
#include <unistd.h>

#import <Foundation/Foundation.h>

#include <cerrno>

#include "container/Trace.h"

namespace qvdevice {

namespace {

bool leadToTheSame(int left, int right) {
  struct stat first{};
  struct stat second{};
  return ::fstat(left, &first) == 0 && ::fstat(right, &second) == 0 && first.st_dev == second.st_dev &&
         first.st_ino == second.st_ino;
}

void showToWhoeverFollows(std::string_view text) {
  // Where the trace and standard error go the same way, the text stands there already.
  if (traceDescriptor() < 0 || leadToTheSame(STDERR_FILENO, traceDescriptor())) return;
  while (!text.empty()) {
    const std::size_t end = text.find('\n');
    trace({{"kind", "output"}, {"text", text.substr(0, end)}});
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
  }
}

NSLog_printf_handler *writeToStandardError;

void log(NSString *message) {
  writeToStandardError(message);
  // Not UTF8String, which raises for half a character.
  NSData *const text = [message dataUsingEncoding:NSUTF8StringEncoding allowLossyConversion:YES];
  showToWhoeverFollows({static_cast<const char *>([text bytes]), [text length]});
}

__attribute__((constructor)) void takePartInNSLog() {
  writeToStandardError = _NSLog_printf_handler;
  _NSLog_printf_handler = log;
}

} // namespace

void systemLog(std::string_view text) {
  for (std::string_view rest = text; !rest.empty();) {
    const ssize_t written = ::write(STDERR_FILENO, rest.data(), rest.size());
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) break;
    rest.remove_prefix(static_cast<std::size_t>(written));
  }
  showToWhoeverFollows(text);
}

} // namespace qvdevice

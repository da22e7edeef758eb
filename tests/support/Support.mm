#include "Support.h"

#include <objc/runtime.h>

#include <atomic>
#include <filesystem>
#include <fstream>
#include <sys/xattr.h>
#include <unistd.h>

namespace support {

std::string storedClass(NSString *path) {
  char value[128];
  const ssize_t length = getxattr([path fileSystemRepresentation], "user.qv.protection", value, sizeof value);
  return length > 0 ? std::string(value, static_cast<size_t>(length)) : std::string();
}

void storeClass(NSString *path, const char *protectionClass) {
  setxattr([path fileSystemRepresentation], "user.qv.protection", protectionClass,
           std::char_traits<char>::length(protectionClass), 0);
}

NSString *freshFolder() {
  static std::atomic<int> count{0};
  NSString *name = [NSString stringWithFormat:@"test-%d", count++];
  NSString *path = [NSTemporaryDirectory() stringByAppendingPathComponent:name];
  [[NSFileManager defaultManager] createDirectoryAtPath:path withIntermediateDirectories:YES attributes:nil error:NULL];
  return path;
}

SEL addMethodWithoutEncoding(Class cls, const char *name) {
  // Debian's runtime refuses to add one, so the encoding is taken away afterwards; the layout is that of its methods.
  struct MethodParts {
    SEL name;
    const char *types;
    IMP implementation;
  };
  const SEL selector = sel_registerName(name);
  class_addMethod(cls, selector, class_getMethodImplementation([NSObject class], @selector(self)), "@16@0:8");
  reinterpret_cast<MethodParts *>(class_getInstanceMethod(cls, selector))->types = nullptr;
  return selector;
}

/// Whether a process was started as this program; an emulator has it among its own arguments.
static bool isStartedAs(const std::string &program, const std::filesystem::path &process) {
  std::ifstream file(process / "cmdline");
  for (std::string argument; std::getline(file, argument, '\0');) {
    if (std::filesystem::path(argument).filename() == program) return true;
  }
  return false;
}

std::vector<pid_t> processesOf(const std::string &program) {
  std::vector<pid_t> found;
  for (const auto &entry : std::filesystem::directory_iterator("/proc")) {
    std::ifstream file(entry.path() / "stat");
    pid_t pid = 0;
    std::string name;
    char state = 0;
    pid_t parent = 0;
    if (file >> pid >> name >> state >> parent && parent == getppid() && state != 'Z' &&
        isStartedAs(program, entry.path()))
      found.push_back(pid);
  }
  return found;
}

std::string text(NSString *string) { return string ? [string UTF8String] : "(nil)"; }

bool exists(NSString *path) { return [[NSFileManager defaultManager] fileExistsAtPath:path]; }

} // namespace support

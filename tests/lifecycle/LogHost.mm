// A host app that does to its standard error, and to the library's capture of it, what its arguments say, one by one.
// What it tells goes to standard output.
#import <Foundation/Foundation.h>
#import <Zorbel/ZBLogHelper.h>

#include <objc/runtime.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <string>

#include <signal.h>
#include <sys/resource.h>
#include <unistd.h>

@interface NSObject (SBLogHelper)
+ (void)load;
+ (BOOL)isLogInterceptionStarted;
+ (void)startInterceptingLogs;
+ (void)stopInterceptingLogsPreservingFile:(BOOL)preserving;
+ (int)replaceStdErrDescriptorWithNewPath:(const char *)path;
@end

namespace {

namespace fs = std::filesystem;

Class helper() { return objc_getClass("SBLogHelper"); }

void tell(const std::string &line) {
  std::printf("%s\n", line.c_str());
  std::fflush(stdout);
}

std::string leadsTo(const std::string &descriptor) {
  std::array<char, 4096> target{};
  const ssize_t length = readlink(("/proc/self/fd/" + descriptor).c_str(), target.data(), target.size());
  return length < 0 ? "nothing" : std::string(target.data(), static_cast<std::size_t>(length));
}

void limit(int resource, const std::string &number) {
  rlimit both{};
  getrlimit(resource, &both);
  both.rlim_cur = std::stoul(number);
  setrlimit(resource, &both);
}

NSString *chosenPath;
NSString *createChosen(id, SEL, NSString *) { return chosenPath; }

const std::map<std::string, std::function<void(const std::string &)>> kWords{
    {"load", [](auto) { [helper() load]; }},
    {"start", [](auto) { [helper() startInterceptingLogs]; }},
    {"stop-keeping", [](auto) { [helper() stopInterceptingLogsPreservingFile:YES]; }},
    {"stop-deleting", [](auto) { [helper() stopInterceptingLogsPreservingFile:NO]; }},
    {"started", [](auto) { tell([helper() isLogInterceptionStarted] ? "started" : "not started"); }},
    {"where", [](auto) { tell("standard error: " + leadsTo("2")); }},
    {"opened",
     [](auto) {
       // The files that are open beyond the three that every program has, lowest first.
       std::map<int, std::string> all;
       for (const auto &entry : fs::directory_iterator("/proc/self/fd")) {
         const std::string number = entry.path().filename();
         all[std::stoi(number)] = leadsTo(number);
       }
       for (const auto &[number, target] : all)
         if (number > 2 && target.starts_with(NSHomeDirectory().UTF8String) && !target.ends_with("/zorbel.log"))
           tell("open: " + target);
     }},
    {"say",
     [](const std::string &text) {
       const std::string line = text + "\n";
       tell(write(STDERR_FILENO, line.data(), line.size()) < 0 ? "not said" : "said");
     }},
    {"log", [](const std::string &text) { NSLog(@"%s", text.c_str()); }},
    {"replace",
     [](const std::string &path) {
       tell("descriptor " + std::to_string([helper() replaceStdErrDescriptorWithNewPath:path.c_str()]));
     }},
    {"descriptors", [](const std::string &number) { limit(RLIMIT_NOFILE, number); }},
    {"file-size",
     [](const std::string &number) {
       signal(SIGXFSZ, SIG_IGN);
       limit(RLIMIT_FSIZE, number);
     }},
    {"close", [](const std::string &number) { close(std::stoi(number)); }},
    {"remove", [](const std::string &path) { fs::remove_all(path); }},
    {"log-file",
     [](const std::string &path) {
       chosenPath = [[NSString alloc] initWithUTF8String:path.c_str()];
       method_setImplementation(class_getClassMethod([ZBLogHelper class], @selector(createLogFileWithName:)),
                                reinterpret_cast<IMP>(&createChosen));
     }},
    {"leak",
     [](auto) {
       static volatile std::size_t size = 1000;
       void *volatile lost = std::malloc(size);
       lost = nullptr;
       (void)lost;
     }},
    {"overrun",
     [](auto) {
       static volatile std::size_t size = 8;
       const std::unique_ptr<char[]> bytes(new char[size]);
       static_cast<volatile char *>(bytes.get())[size] = 1;
     }},
    {"overflow",
     [](auto) {
       static volatile int most = 2147483647;
       most = most + 1;
     }},
};

} // namespace

int main(int argc, char **argv) {
  for (int i = 1; i < argc; ++i) {
    NSAutoreleasePool *const pool = [[NSAutoreleasePool alloc] init];
    const std::string word = argv[i];
    const std::size_t equals = word.find('=');
    const auto found = kWords.find(word.substr(0, equals));
    if (found == kWords.end()) {
      tell("LogHost does not know " + word);
      return 1;
    }
    found->second(equals == std::string::npos ? "" : word.substr(equals + 1));
    [pool drain];
  }
  return 0;
}

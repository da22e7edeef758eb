#include "Program.h"

#include <cstdlib>
#include <fstream>
#include <sstream>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

namespace fs = std::filesystem;

static std::string contentOf(const fs::path& file) {
  std::ostringstream text;
  text << std::ifstream(file, std::ios::binary).rdbuf();
  return text.str();
}

Ended runProgram(const std::vector<std::string>& arguments, const std::vector<std::string>& environment) {
  const WorkFolder folder;
  const std::string out = folder.path() / "out";
  const std::string err = folder.path() / "err";
  const pid_t child = fork();
  if (child == 0) {
    dup2(open(out.c_str(), O_WRONLY | O_CREAT, 0600), STDOUT_FILENO);
    dup2(open(err.c_str(), O_WRONLY | O_CREAT, 0600), STDERR_FILENO);
    for (const std::string& entry : environment) {
      setenv(entry.substr(0, entry.find('=')).c_str(), entry.substr(entry.find('=') + 1).c_str(), 1);
    }
    std::vector<char*> list;
    for (const std::string& argument : arguments) {
      list.push_back(const_cast<char*>(argument.c_str()));
    }
    list.push_back(nullptr);
    execv(list.front(), list.data());
    _exit(127);
  }
  int status = 0;
  waitpid(child, &status, 0);
  return {WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status), contentOf(out), contentOf(err)};
}

Ended qvdevice(std::vector<std::string> arguments, const std::vector<std::string>& environment) {
  arguments.insert(arguments.begin(), QVDEVICE);
  return runProgram(arguments, environment);
}

std::vector<std::string> linesOf(const std::string& text) {
  std::istringstream stream(text);
  std::vector<std::string> lines;
  for (std::string line; std::getline(stream, line);) {
    lines.push_back(line);
  }
  return lines;
}

std::vector<nlohmann::json> objectsOf(const std::string& text) {
  std::vector<nlohmann::json> objects;
  for (const std::string& line : linesOf(text)) {
    objects.push_back(nlohmann::json::parse(line, nullptr, false));
    EXPECT_TRUE(objects.back().is_object()) << line;
  }
  return objects;
}

std::vector<nlohmann::json> objectsOf(const std::string& text, const std::string& kind) {
  std::vector<nlohmann::json> objects;
  for (const nlohmann::json& object : objectsOf(text)) {
    if (object.value("kind", "") == kind) {
      objects.push_back(object);
    }
  }
  return objects;
}

WorkFolder::WorkFolder() {
  std::string pattern = fs::temp_directory_path() / "qvdevice-test.XXXXXX";
  path_ = mkdtemp(pattern.data());
}

WorkFolder::~WorkFolder() { fs::remove_all(path_); }

std::string WorkFolder::write(const std::string& name, const std::string& text) const {
  std::ofstream(path_ / name) << text;
  return path_ / name;
}

std::string WorkFolder::app(const std::string& name, const std::string& source) const {
  const std::string bundle = path_ / (name + ".app");
  const Ended compiled = qvdevice({"cc", "-o", bundle, write(name + ".m", source)});
  EXPECT_EQ(compiled.status, 0) << compiled.err;
  return bundle;
}

std::string appSource(const std::string& launch) {
  return R"(
#import <UIKit/UIKit.h>
#include <signal.h>
#include <unistd.h>

@interface OutsideDelegate : UIResponder <UIApplicationDelegate>
@end

@implementation OutsideDelegate
- (NSString *)pathOf:(NSString *)name {
  NSArray *folders = NSSearchPathForDirectoriesInDomains(NSDocumentDirectory, NSUserDomainMask, YES);
  return [[folders objectAtIndex:0] stringByAppendingPathComponent:name];
}
- (BOOL)application:(UIApplication *)application didFinishLaunchingWithOptions:(NSDictionary *)launchOptions {
)" + launch +
         R"(
  return YES;
}
@end

int main(int argc, char *argv[]) {
  @autoreleasepool {
    return UIApplicationMain(argc, argv, nil, @"OutsideDelegate");
  }
}
)";
}

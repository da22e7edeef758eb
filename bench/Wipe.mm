// What it costs to wipe an app's files: the library's wipe, GNU rm, and bare system calls, each on a tree of its own.
#import <Foundation/Foundation.h>

#include <dirent.h>
#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "SideBySide.hpp"

extern char **environ;

@interface NSObject (QVWipe)
+ (void)_cleanUpFileSystem;
@end

namespace {

constexpr int filesEach = 100;
constexpr char contents[512] = {};

/// As many small files, a hundred in a folder.
void makeTree(const std::string &tree, int files) {
  std::filesystem::create_directories(tree);
  for (int folder = 0; folder * filesEach < files; ++folder) {
    const std::string path = tree + "/" + std::to_string(folder);
    mkdir(path.c_str(), 0755);
    for (int i = 0; i < filesEach; ++i) {
      const int file = open((path + "/file " + std::to_string(i)).c_str(), O_CREAT | O_WRONLY, 0644);
      if (write(file, contents, sizeof contents) != sizeof contents) std::abort();
      close(file);
    }
  }
}

/// Trees for all turns, made before the first is removed, and written to the disk. Made between removals they would
/// take minutes: when ext4 without a journal looks for the number of a new file, it passes over each one that a removed
/// file had in the last minutes.
class Trees {
public:
  explicit Trees(const std::string &container) : container_(container) {
    for (const auto &[files, trees] : {std::pair(10000, 15), std::pair(100000, 3)}) {
      for (int tree = 0; tree < trees; ++tree) {
        left_[files].push_back(waiting() + "/" + std::to_string(files) + "-" + std::to_string(tree));
        makeTree(left_[files].back(), files);
      }
    }
    // As an app's files have long been when it is retired. Whoever writes a line while so much waits to be written is
    // made to wait for it, and rm writes none.
    const int folder = open(container.c_str(), O_RDONLY | O_DIRECTORY);
    if (folder < 0 || syncfs(folder) != 0) std::abort();
    close(folder);
  }

  /// The path of the next tree, which is now among the documents.
  std::string take(int files) {
    const std::string tree = container_ + "/Documents/tree";
    if (left_[files].empty() || rename(left_[files].back().c_str(), tree.c_str()) != 0) std::abort();
    left_[files].pop_back();
    return tree;
  }

private:
  /// A folder with the bundle's name, which a wipe leaves alone.
  std::string waiting() const {
    NSString *const bundle = [[[NSBundle mainBundle] executablePath] stringByDeletingLastPathComponent];
    return container_ + "/" + [[bundle lastPathComponent] UTF8String];
  }

  const std::string container_;
  std::map<int, std::vector<std::string>> left_;
};

void removeWithGnuRm(const std::string &tree) {
  const char *const command[] = {"rm", "-rf", tree.c_str(), nullptr};
  pid_t child = 0;
  int status = 1;
  if (posix_spawnp(&child, "rm", nullptr, nullptr, const_cast<char **>(command), environ) == 0)
    waitpid(child, &status, 0);
  if (status != 0) std::abort();
}

/// As the wipe goes about it: the whole list first, a folder before what it holds, then item by item.
void list(const std::string &folder, std::vector<std::string> &paths) {
  DIR *const open = opendir(folder.c_str());
  while (const dirent *entry = readdir(open)) {
    const std::string name = entry->d_name;
    if (name == "." || name == "..") continue;
    paths.push_back(folder + "/" + name);
    if (entry->d_type == DT_DIR) list(std::string(paths.back()), paths);
  }
  closedir(open);
}

void removeWithBareCalls(const std::string &tree) {
  std::vector<std::string> paths;
  list(tree, paths);
  // A folder can go when it is empty.
  for (auto path = paths.rbegin(); path != paths.rend(); ++path) {
    if (unlink(path->c_str()) != 0) rmdir(path->c_str());
  }
  rmdir(tree.c_str());
}

/// What this process and those that it has waited for have taken.
double processorNanoseconds() {
  double sum = 0;
  for (const int who : {RUSAGE_SELF, RUSAGE_CHILDREN}) {
    rusage usage{};
    getrusage(who, &usage);
    for (const timeval time : {usage.ru_utime, usage.ru_stime})
      sum += static_cast<double>(time.tv_sec) * 1e9 + static_cast<double>(time.tv_usec) * 1e3;
  }
  return sum;
}

/// The SDK writes each line to its file and to the console as well, which is not what is measured.
void wipe(const std::string &) {
  NSAutoreleasePool *const pool = [[NSAutoreleasePool alloc] init];
  const int console = dup(STDOUT_FILENO);
  const int nowhere = open("/dev/null", O_WRONLY);
  dup2(nowhere, STDOUT_FILENO);
  [NSClassFromString(@"ZorbelUtil") _cleanUpFileSystem];
  dup2(console, STDOUT_FILENO);
  close(nowhere);
  close(console);
  [pool drain];
}

void Wipe(benchmark::State &state) {
  // Nothing is removed anywhere but in a container.
  const char *const given = std::getenv("QVDEVICE_CONTAINER");
  const std::string container = [NSHomeDirectory() UTF8String];
  if (!given || !std::filesystem::equivalent(given, container)) {
    state.SkipWithError("the home directory is no container");
    return;
  }
  static Trees trees(container);
  const int files = static_cast<int>(state.range(0));
  bool gone = true;
  const auto removing = [&](const std::string &name, void (*remove)(const std::string &)) {
    return bench::Variant{name, [&, name, remove] {
                            const std::string tree = trees.take(files);
                            const double before = processorNanoseconds();
                            const double each =
                                bench::nanosecondsEach(static_cast<std::size_t>(files), [&] { remove(tree); });
                            state.counters[name + "Processor"] = (processorNanoseconds() - before) / files;
                            gone = gone && access(tree.c_str(), F_OK) != 0;
                            return each;
                          }};
  };
  bench::Variant variants[] = {removing("wipe", wipe), removing("rm", removeWithGnuRm),
                               removing("bare", removeWithBareCalls)};
  // Each repetition is one turn of each, in another order.
  static std::size_t repetition = 0;
  std::ranges::rotate(variants, variants + repetition++ % std::size(variants));
  bench::sideBySide(state, variants);
  if (!gone) state.SkipWithError("a tree was not removed");
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  state.counters["peakMiB"] = static_cast<double>(usage.ru_maxrss) / 1024;
}

} // namespace

// Making the trees takes longer than removing them.
BENCHMARK(Wipe)->Name("Wipe10000")->Arg(10000)->Iterations(1)->Repetitions(5);
BENCHMARK(Wipe)->Name("Wipe100000")->Arg(100000)->Iterations(1)->Repetitions(1);

BENCHMARK_MAIN();

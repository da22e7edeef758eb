#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>

#include <CLI/CLI.hpp>
#include <llvm/Support/ErrorHandling.h>

#include "Binary.h"
#include "Bundles.h"

using namespace qvcheck;

/// One C name a line, as in exports.txt; the linker sees it with an underscore.
static std::vector<std::string> readExports(const std::string& path) {
  std::ifstream file(path);
  if (!file) {
    throw std::runtime_error(path + ": cannot be opened");
  }
  std::vector<std::string> names;
  for (std::string line; std::getline(file, line);) {
    if (!line.empty()) {
      names.push_back("_" + line);
    }
  }
  return names;
}

static void check(std::string path, const std::string& symbols, const Promises& promises, Findings& findings) {
  while (path.size() > 1 && path.ends_with('/')) {
    path.pop_back();
  }
  if (!std::filesystem::exists(path)) {
    throw std::runtime_error(path + ": does not exist");
  }
  if (!std::filesystem::is_directory(path)) {
    checkBinary(Binary(path), promises, findings);
  } else if (std::filesystem::path(path).extension() == ".xcframework") {
    checkXCFramework(path, promises, findings);
  } else {
    checkFramework(path, symbols, promises, findings);
  }
}

/// LLVM's reader gives up on some files instead of returning what is wrong.
[[noreturn]] static void giveUp(void*, const char* reason, bool) {
  std::fprintf(stderr, "qvcheck: the file is no whole Mach-O file: %s\n", reason);
  std::_Exit(EXIT_FAILURE);
}

int main(int argc, char** argv) {
  CLI::App app(
      "Checks a built QVSandbox.xcframework, a framework or a binary of it: says all that is wrong, then fails.");
  std::string path;
  std::string exports;
  std::vector<std::string> stubs;
  std::string texts;
  std::string symbols;
  std::string sources;
  app.add_option("PATH", path, "An .xcframework or .framework folder, or a Mach-O file, thin or universal")->required();
  app.add_option("--exports", exports, "The exported C names, one a line")->required();
  app.add_option("--stubs", stubs, "A folder with the linker's stubs (.tbd); may be given more than once")->required();
  app.add_option("--texts", texts, "The texts that it holds, and those that it must not hold (JSON)")->required();
  app.add_option("--symbols", symbols, "A framework's .dSYM; an xcframework has its own");
  app.add_option("--sources", sources, "The folder that it was built from, which it must not name");
  CLI11_PARSE(app, argc, argv);
  llvm::install_fatal_error_handler(&giveUp);
  try {
    Promises promises;
    promises.exports = readExports(exports);
    for (const std::string& folder : stubs) {
      promises.stubs.add(folder);
    }
    promises.texts = Texts::read(texts);
    promises.sources = sources;
    Findings findings;
    check(path, symbols, promises, findings);
    return findings.count() == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
  } catch (const std::exception& problem) {
    std::fprintf(stderr, "%s\n", problem.what());
    return EXIT_FAILURE;
  }
}

#include "Compile.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <set>
#include <system_error>

#include <unistd.h>

#include "Bundle.h"
#include "Child.h"
#include "Container.h"
#include "Failure.h"
#include "Installation.h"
#include "ToolChain.h"

namespace fs = std::filesystem;

namespace qvdevice {

namespace {

constexpr const char* kHelp = "Compiles an app's Objective-C sources into a bundle.\n"
                              "Usage: qvdevice cc -o APP.app [--plist FILE] [--identifier ID] SOURCE... [FLAG...]\n\n"
                              "  -o APP.app          The bundle to make; one of that name is replaced\n"
                              "  --plist FILE        Its Info.plist; without it one is written\n"
                              "  --identifier ID     The bundle identifier in the Info.plist that is written\n"
                              "\nAll else goes to the compiler as it is.\n";

struct Order {
  fs::path output;
  fs::path plist;
  std::string identifier;
  std::vector<std::string> forCompiler;
  bool help = false;
};

bool isSource(const fs::path& argument) {
  static const std::set<std::string> kExtensions{".m", ".mm", ".c", ".cc", ".cpp", ".cxx"};
  return kExtensions.contains(argument.extension().string());
}

bool isPlusPlus(const fs::path& source) {
  return isSource(source) && source.extension() != ".m" && source.extension() != ".c";
}

Order readOrder(const std::vector<std::string>& arguments) {
  Order order;
  bool sources = false;
  for (auto word = arguments.begin(); word != arguments.end(); ++word) {
    const auto value = [&word, &arguments]() -> std::string {
      const std::string option = *word;
      if (++word == arguments.end() || word->empty()) {
        throw Failure(kUsage, option + " needs a value");
      }
      return *word;
    };
    if (*word == "-o") {
      order.output = value();
    } else if (*word == "--plist") {
      order.plist = value();
    } else if (*word == "--identifier") {
      order.identifier = value();
    } else if (*word == "-h" || *word == "--help") {
      order.help = true;
      return order;
    } else if (*word == "-framework") {
      // As one writes it for the phone; the device has its frameworks in one library.
      static const std::set<std::string> kFrameworks{"Accelerate", "CoreData",   "CoreGraphics",
                                                     "Foundation", "QuartzCore", "UIKit"};
      if (const std::string framework = value(); !kFrameworks.contains(framework)) {
        throw Failure(kUsage, "the device has no framework " + framework);
      }
    } else if (*word == "-c" || *word == "-S" || *word == "-E") {
      throw Failure(kUsage, *word + " makes no app; name the sources and -o APP.app");
    } else {
      sources = sources || isSource(*word);
      order.forCompiler.push_back(*word);
    }
  }
  if (order.output.empty()) {
    throw Failure(kUsage, "-o APP.app is missing: it names the app to make");
  }
  if (!order.output.has_filename()) {
    order.output = order.output.parent_path();
  }
  if (order.output.extension() != ".app") {
    throw Failure(kUsage, "an app's name ends in .app; -o " + order.output.string() + " does not");
  }
  if (!sources) {
    throw Failure(kUsage, "there is no source file to compile");
  }
  return order;
}

/// Text as it may stand in an XML element.
std::string escaped(const std::string& text) {
  std::string result;
  for (const char c : text) {
    result += c == '&' ? "&amp;" : c == '<' ? "&lt;" : c == '>' ? "&gt;" : std::string(1, c);
  }
  return result;
}

void writePlist(const fs::path& file, const std::string& name, const std::string& identifier) {
  std::ofstream(file) << R"(<?xml version="1.0" encoding="UTF-8"?>
<!DOCTYPE plist PUBLIC "-//Apple//DTD PLIST 1.0//EN" "http://www.apple.com/DTDs/PropertyList-1.0.dtd">
<plist version="1.0">
<dict>
  <key>CFBundleExecutable</key>
  <string>)" << escaped(name)
                      << R"(</string>
  <key>CFBundleIdentifier</key>
  <string>)" << escaped(identifier)
                      << R"(</string>
  <key>CFBundleName</key>
  <string>)" << escaped(name)
                      << R"(</string>
  <key>CFBundlePackageType</key>
  <string>APPL</string>
  <key>CFBundleShortVersionString</key>
  <string>1.0</string>
</dict>
</plist>
)";
}

std::vector<std::string> compilerCommand(const Order& order, const fs::path& executable) {
  bool plusPlus = false;
  for (const std::string& argument : order.forCompiler) {
    plusPlus = plusPlus || isPlusPlus(argument);
  }
  std::vector<std::string> command{plusPlus ? toolchain::kPlusPlusCompiler : toolchain::kCompiler, "-isystem",
                                   (programFolder() / toolchain::kDeviceHeaders).lexically_normal().string()};
  command.insert(command.end(), toolchain::kCompileFlags.begin(), toolchain::kCompileFlags.end());
  command.insert(command.end(), order.forCompiler.begin(), order.forCompiler.end());
  const std::string libraries = libraryFolder().string();
  // The device first: it takes the place of functions that Foundation's library has too.
  command.insert(command.end(), {"-o", executable.string(), "-Wl,--no-as-needed", "-L" + libraries, "-lQVDevice",
                                 "-Wl,-rpath," + libraries});
  command.insert(command.end(), toolchain::kLinkFlags.begin(), toolchain::kLinkFlags.end());
  return command;
}

/// The bundle while it is made, beside the place where it will stand. Nothing is left of it unless it gets there.
class Draft {
public:
  explicit Draft(const fs::path& output) : output_(output) {
    std::string pattern = output.string() + ".XXXXXX";
    if (mkdtemp(pattern.data()) == nullptr) {
      throw Failure(kCannotStart, "cannot make " + output.string());
    }
    folder_ = pattern;
    fs::permissions(folder_,
                    fs::perms::group_read | fs::perms::group_exec | fs::perms::others_read | fs::perms::others_exec,
                    fs::perm_options::add);
  }
  ~Draft() {
    std::error_code ignored;
    fs::remove_all(folder_, ignored);
  }
  Draft(const Draft&) = delete;
  Draft& operator=(const Draft&) = delete;

  const fs::path& folder() const { return folder_; }

  void deliver() {
    if (fs::exists(output_)) {
      removeTree(output_);
    }
    fs::rename(folder_, output_);
  }

private:
  fs::path output_;
  fs::path folder_;
};

} // namespace

int compile(const std::vector<std::string>& arguments) {
  const Order order = readOrder(arguments);
  if (order.help) {
    std::fputs(kHelp, stdout);
    return kDone;
  }
  if (fs::exists(order.output) && !fs::exists(order.output / "Info.plist")) {
    throw Failure(kUsage, order.output.string() + " is there already and is not an app; it is left alone");
  }
  std::string name = order.output.stem().string();
  if (!order.plist.empty()) {
    name = plistText(order.plist, "CFBundleExecutable");
    if (name.empty() || name.find('/') != std::string::npos) {
      throw Failure(kBadInput, order.plist.string() + " names no executable (CFBundleExecutable)");
    }
  }

  Draft draft(order.output);
  if (order.plist.empty()) {
    writePlist(draft.folder() / "Info.plist", name,
               order.identifier.empty() ? "com.example." + name : order.identifier);
  } else {
    fs::copy_file(order.plist, draft.folder() / "Info.plist");
  }
  try {
    SignalQueue signals;
    Child compiler({compilerCommand(order, draft.folder() / name), {}, {}});
    const int status = shellStatus(compiler.wait(signals));
    if (status == 0) {
      draft.deliver();
    }
    return status;
  } catch (const std::system_error& error) {
    throw Failure(kCannotStart, std::string("the compiler does not start: ") + error.what());
  }
}

} // namespace qvdevice

#include <cstdio>
#include <exception>
#include <string>

#include <CLI/CLI.hpp>

#include "Failure.h"
#include "Wrap.h"

using namespace qvwrap;

namespace {

constexpr const char* kAbout =
    "Puts QVSandbox.framework into an app for iOS, a folder NAME.app or an archive NAME.ipa, so that it is loaded "
    "before\n"
    "the app's main. The app is changed in its place, whole or not at all. Its extensions are left alone.";

constexpr const char* kStatuses =
    "Signing stays yours: sign the frameworks, then the app, after wrapping.\n\n"
    "Exit status: 0 done, with --check: wrapped; 1 (--check) not wrapped; 2 (--check) wrapped in part or by other "
    "means;\n"
    "64 wrong command line; 65 refused; 66 a file is missing or unreadable; 73 the app's place cannot be written to.\n"
    "Whatever is refused stays as it was.";

struct Options {
  std::string app;
  std::string framework;
  bool check = false;
  bool remove = false;
  bool invalidateSignature = false;
};

Report execute(const Options& options) {
  if (options.check) {
    return check(options.app);
  }
  return options.remove ? remove(options.app, options.invalidateSignature)
                        : wrap(options.app, options.framework, options.invalidateSignature);
}

int say(const Failure& failure, const std::string& app) {
  std::fprintf(stderr, "qvwrap: %s: %s.\n", app.c_str(), failure.what());
  return failure.status();
}

} // namespace

int main(int argc, char** argv) {
  Options options;
  CLI::App line(kAbout, "qvwrap");
  line.footer(kStatuses);
  line.add_option("APP", options.app, "The app: NAME.app or NAME.ipa")->required();
  CLI::Option* framework = line.add_option("--framework", options.framework,
                                           "QVSandbox.framework, or the QVSandbox.xcframework that holds it");
  CLI::Option* checking = line.add_flag("--check", options.check, "Say whether and how the app is wrapped");
  CLI::Option* removing =
      line.add_flag("--remove", options.remove, "Take the library out: the executable is byte for byte what it was");
  CLI::Option* invalidate = line.add_flag("--invalidate-signature", options.invalidateSignature,
                                          "Go on although the app's signature will no longer be valid");
  checking->excludes(removing)->excludes(framework)->excludes(invalidate);
  removing->excludes(framework);
  try {
    line.parse(argc, argv);
    if (!options.check && !options.remove && options.framework.empty()) {
      throw CLI::RequiredError("--framework");
    }
  } catch (const CLI::ParseError& error) {
    return line.exit(error) == 0 ? kDone : kUsage;
  }
  try {
    const Report report = execute(options);
    std::fputs(report.text().c_str(), stdout);
    return report.status;
  } catch (const Failure& failure) {
    return say(failure, options.app);
  } catch (const std::exception& error) {
    return say(Failure(kInternal, error.what()), options.app);
  }
}

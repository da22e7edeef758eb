#include "Run.h"

#include <cstdlib>
#include <cstring>
#include <system_error>

#include <sys/wait.h>
#include <unistd.h>

#include "AppProcess.h"
#include "Bundle.h"
#include "Container.h"
#include "Events.h"
#include "Failure.h"
#include "Installation.h"
#include "Items.h"
#include "Report.h"

namespace fs = std::filesystem;

namespace qvdevice {

namespace {

using Clock = AppProcess::Clock;

/// An app that says nothing for so long has nothing more to do of its own accord.
constexpr auto kIdle = std::chrono::milliseconds(300);
/// After an event, before the next one.
constexpr auto kSettled = std::chrono::milliseconds(100);

// Statuses by which the device and the SDK refuse to go on, before any code of the app.
constexpr int kDeviceRefused = 78;
constexpr int kPoliciesRefused = 65;

/// A folder that somebody names is used as it is, and kept; but only one that can be a container, since the app may do
/// there as it pleases, down to removing everything.
fs::path prepareContainer(const fs::path& folder) {
  std::error_code error;
  fs::create_directories(folder, error);
  if (error) {
    throw Failure(kCannotStart, "cannot make the container " + folder.string() + ": " + error.message());
  }
  if (!fs::is_directory(folder)) {
    throw Failure(kCannotStart, folder.string() + " is not a folder, so it cannot be a container");
  }
  for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
    const std::string name = entry.path().filename().string();
    if (name != "Documents" && name != "Library" && name != "tmp" && entry.path().extension() != ".app") {
      throw Failure(kCannotStart,
                    folder.string() + " is no app's container: it holds " + name + "; name an empty or a new folder");
    }
  }
  return fs::canonical(folder);
}

/// Puts a copy of the app into the container, in place of an older one.
fs::path install(const Bundle& bundle, const fs::path& container) {
  const fs::path installed = container / bundle.folder.filename();
  if (installed == bundle.folder) {
    return installed;
  }
  try {
    if (fs::exists(installed)) {
      removeTree(installed);
    }
    fs::copy(bundle.folder, installed, fs::copy_options::recursive | fs::copy_options::copy_symlinks);
  } catch (const std::exception& error) {
    throw Failure(kCannotStart, "cannot install " + bundle.name() + ": " + error.what());
  }
  return installed;
}

std::string withOurLibrariesFirst() {
  const char* others = std::getenv("LD_LIBRARY_PATH");
  const std::string ours = libraryFolder().string();
  return others != nullptr && *others != '\0' ? ours + ":" + others : ours;
}

Launch makeLaunch(const RunOptions& options, const Bundle& bundle, const fs::path& container) {
  Launch launch;
  launch.command = {(install(bundle, container) / bundle.executable).string()};
  launch.environment["QVDEVICE_CONTAINER"] = container.string();
  launch.environment["QVDEVICE_SETTINGS"] = nlohmann::json{
      {"systemVersion", options.systemVersion},
      {"idiom", options.idiom},
      {"defaultProtection",
       options.defaultProtection}}.dump();
  launch.environment["QVDEVICE_POLICIES"] =
      options.policies ? std::optional(fs::absolute(*options.policies).string()) : std::nullopt;
  // The app lies in the container, away from the libraries that it was linked with.
  launch.environment["LD_LIBRARY_PATH"] = withOurLibrariesFirst();
  launch.environment["LD_PRELOAD"] = std::nullopt;
  if (!options.noLibrary) {
    const fs::path library = libraryFolder() / "libQVSandbox.so";
    if (!fs::exists(library)) {
      throw Failure(kCannotStart, "the library is not there: " + library.string());
    }
    launch.environment["LD_PRELOAD"] = library.string();
  }
  return launch;
}

/// One run of one app, from its launch to its end.
class AppRun {
public:
  AppRun(const RunOptions& options, const std::string& name, Report& report)
      : name_(name), limit_(std::chrono::seconds(options.timeoutSeconds)),
        limitText_(std::to_string(options.timeoutSeconds) + (options.timeoutSeconds == 1 ? " second" : " seconds")),
        report_(report) {
    stream_.onLine = [this](const std::string& text) {
      lastLine_ = text;
      report_.line(text);
    };
    stream_.onRecord = [this](const nlohmann::ordered_json& record) {
      if (record.value("kind", "") == "lifecycle") {
        launched_ = true;
        active_ = active_ || record.value("event", "") == "didBecomeActive";
      }
      report_.record(record);
    };
  }

  Outcome play(Launch launch, const std::vector<Event>& events) {
    AppProcess app(std::move(launch), stream_);
    if (!app.readUntil([this] { return active_; }, limit_)) {
      return app.ended() ? endedByItself(*app.ended()) : hung("was not active after " + limitText_);
    }
    app.readUntilQuiet(kIdle, limit_);
    for (const Event& event : events) {
      if (app.ended()) {
        return endedByItself(*app.ended());
      }
      report_.event(event);
      if (event.verb.empty()) {
        app.readUntil([] { return false; }, event.wait);
      } else if (event.verb == "terminate") {
        return terminate(app, event);
      } else if (const auto outcome = tell(app, event)) {
        return *outcome;
      }
    }
    return hung("was never told to end");
  }

private:
  std::optional<Outcome> tell(AppProcess& app, const Event& event) {
    const auto answer = app.tell(event.verb, limit_);
    if (!answer) {
      return app.ended() ? endedByItself(*app.ended()) : hung(at(event) + "gave no answer in " + limitText_);
    }
    if (!answer->empty()) {
      return Outcome{kAppFailed, name_ + " " + at(event) + "refused \"" + event.name + "\": " + *answer};
    }
    app.readUntilQuiet(kSettled, limit_);
    return std::nullopt;
  }

  Outcome terminate(AppProcess& app, const Event& event) {
    const auto answer = app.tell(event.verb, limit_);
    if (answer && !answer->empty()) {
      return {kAppFailed, name_ + " " + at(event) + "refused \"" + event.name + "\": " + *answer};
    }
    if (!app.readUntil([&app] { return app.ended().has_value(); }, limit_)) {
      return hung(at(event) + "did not end in " + limitText_);
    }
    const int status = *app.ended();
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) {
      return endedByItself(status);
    }
    return {kDone, name_ + " was told to end and did, with status 0"};
  }

  Outcome endedByItself(int status) const {
    if (WIFSIGNALED(status)) {
      return {kAppFailed, name_ + " crashed by signal " + std::to_string(WTERMSIG(status)) + " (" +
                              strsignal(WTERMSIG(status)) + ")"};
    }
    const int code = WEXITSTATUS(status);
    if (!launched_ && (code == kDeviceRefused || code == kPoliciesRefused)) {
      return {code == kPoliciesRefused ? kBadInput : kCannotStart, name_ + " could not start: " + lastLine_};
    }
    return {kAppFailed, name_ + " ended by itself with status " + std::to_string(code) + ", which a real app does not"};
  }

  Outcome hung(const std::string& how) const { return {kAppHung, name_ + " " + how + " and was ended"}; }

  static std::string at(const Event& event) {
    return event.line == 0 ? "" : "(line " + std::to_string(event.line) + " of the events) ";
  }

  std::string name_;
  Clock::duration limit_;
  std::string limitText_;
  Report& report_;
  Stream stream_;
  std::string lastLine_;
  bool launched_ = false;
  bool active_ = false;
};

bool wantsColour() {
  const char* refusal = std::getenv("NO_COLOR");
  const char* terminal = std::getenv("TERM");
  return isatty(STDOUT_FILENO) != 0 && (refusal == nullptr || *refusal == '\0') &&
         (terminal == nullptr || std::strcmp(terminal, "dumb") != 0);
}

} // namespace

int run(const RunOptions& options) {
  // All that can be wrong with what we were given is found before anything is made or started.
  const Bundle bundle = openBundle(options.app);
  const std::vector<Event> events = options.events ? readEvents(*options.events) : defaultEvents();
  if (options.policies && !fs::is_regular_file(*options.policies)) {
    throw Failure(kNoInput, "there is no policies file at " + options.policies->string());
  }

  std::optional<TemporaryContainer> temporary;
  if (!options.container) {
    temporary.emplace();
    if (options.keep) {
      temporary->keep();
    }
  }
  const fs::path container = temporary ? fs::canonical(temporary->path()) : prepareContainer(*options.container);
  const Launch launch = makeLaunch(options, bundle, container);
  const ContainerWatch watch(container, bundle.folder.filename().string());

  const auto report = options.json ? makeJsonReport() : makeTextReport(options.verbose, wantsColour());
  report->begin({bundle, options.systemVersion, options.idiom, options.defaultProtection, container,
                 options.keep || options.container.has_value(), !options.noLibrary});
  try {
    const Outcome outcome = AppRun(options, bundle.name(), *report).play(launch, events);
    report->end(watch.written(), outcome);
    return outcome.status;
  } catch (const std::system_error& error) {
    throw Failure(kCannotStart, bundle.name() + " does not start: " + error.what());
  }
}

} // namespace qvdevice

#include "Run.h"

#include <cstdlib>
#include <cstring>
#include <system_error>

#include <unistd.h>

#include "AppRun.h"
#include "Bundle.h"
#include "Container.h"
#include "Device.h"
#include "Events.h"
#include "Failure.h"
#include "Installation.h"
#include "Items.h"
#include "Report.h"

namespace fs = std::filesystem;

namespace qvdevice {

namespace {

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
    if (fs::exists(fs::symlink_status(installed))) {
      removeTree(installed);
    }
    fs::copy(bundle.folder, installed, fs::copy_options::recursive | fs::copy_options::copy_symlinks);
  } catch (const std::exception& error) {
    throw Failure(kCannotStart, "cannot install " + bundle.name() + ": " + error.what());
  }
  return installed;
}

nlohmann::json settingsOf(const RunOptions& options) {
  nlohmann::json settings{{"systemVersion", options.systemVersion},
                          {"idiom", options.idiom},
                          {"defaultProtection", options.defaultProtection}};
  if (options.withoutTerminateWithSuccess) {
    settings["terminateWithSuccess"] = false;
  }
  if (options.withoutPrinting) {
    settings["printingAvailable"] = false;
  }
  return settings;
}

nlohmann::json launchOptionsOf(const RunOptions& options) {
  nlohmann::json launch{{"url", *options.launchUrl}};
  if (options.launchSource) {
    launch["sourceApplication"] = *options.launchSource;
  }
  return launch;
}

Launch makeLaunch(const RunOptions& options, const Bundle& bundle, const fs::path& container, const fs::path& device) {
  Launch launch;
  launch.command = {(install(bundle, container) / bundle.executable).string()};
  launch.environment["QVDEVICE_CONTAINER"] = container.string();
  launch.environment["QVDEVICE_DEVICE"] = device.empty() ? std::nullopt : std::optional(device.string());
  launch.environment["QVDEVICE_SETTINGS"] = settingsOf(options).dump();
  launch.environment["QVDEVICE_LAUNCH"] =
      options.launchUrl ? std::optional(launchOptionsOf(options).dump()) : std::nullopt;
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
  const DeviceToRunOn device(options.device, options.installed);
  const Launch launch = makeLaunch(options, bundle, container, device.folder());
  const ContainerWatch watch(container, bundle.folder.filename().string());

  const auto report = options.json ? makeJsonReport() : makeTextReport(options.verbose, wantsColour());
  report->begin({bundle, options.systemVersion, options.idiom, options.defaultProtection, container,
                 options.keep || options.container.has_value(), !options.noLibrary});
  try {
    const Outcome outcome = AppRun(bundle.name(), std::chrono::seconds(options.timeoutSeconds), *report)
                                .play(launch, device.folder(), events);
    report->end(watch.written(), outcome);
    return outcome.status;
  } catch (const std::system_error& error) {
    throw Failure(kCannotStart, bundle.name() + " does not start: " + error.what());
  }
}

} // namespace qvdevice

#include "AppLaunch.h"

#include <system_error>

#include "AppRun.h"
#include "Container.h"
#include "Failure.h"
#include "Installation.h"
#include "Items.h"

namespace fs = std::filesystem;

namespace qvdevice {

namespace {

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

nlohmann::json settingsOf(const LaunchOptions& options) {
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

nlohmann::json launchOptionsOf(const LaunchOptions& options) {
  nlohmann::json launch{{"url", *options.launchUrl}};
  if (options.launchSource) {
    launch["sourceApplication"] = *options.launchSource;
  }
  return launch;
}

} // namespace

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
    if (name != "Documents" && name != "Library" && name != "SystemData" && name != "tmp" &&
        entry.path().extension() != ".app") {
      throw Failure(kCannotStart,
                    folder.string() + " is no app's container: it holds " + name + "; name an empty or a new folder");
    }
  }
  return fs::canonical(folder);
}

Launch makeLaunch(const LaunchOptions& options, const Bundle& bundle, const fs::path& container,
                  const fs::path& device) {
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

Outcome playApp(const LaunchOptions& options, const Bundle& bundle, const fs::path& container, bool kept,
                const fs::path& device, const std::vector<Event>& events, Report& report, ScreenFolder* screens) {
  const Launch launch = makeLaunch(options, bundle, container, device);
  const ContainerWatch watch(container, bundle.folder.filename().string());
  report.begin(
      {bundle, options.systemVersion, options.idiom, options.defaultProtection, container, kept, !options.noLibrary});
  try {
    AppRun run(bundle.name(), std::chrono::seconds(options.timeoutSeconds), report);
    run.keepScreensIn(screens);
    const Outcome outcome = run.play(launch, device, events);
    if (!run.coverage().empty()) {
      report.record(run.coverage().record());
    }
    report.end(watch.written(), outcome);
    return outcome;
  } catch (const std::system_error& error) {
    throw Failure(kCannotStart, bundle.name() + " does not start: " + error.what());
  }
}

} // namespace qvdevice

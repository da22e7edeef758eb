#include "Play.h"

#include <map>
#include <memory>

#include "AppLaunch.h"
#include "Container.h"
#include "Device.h"
#include "Failure.h"
#include "Installation.h"
#include "InstalledApps.h"
#include "Report.h"
#include "Scenario.h"
#include "Terminal.h"
#include "report/HtmlReport.h"

namespace fs = std::filesystem;

namespace qvdevice {

namespace {

/// The containers of the apps of one device, made when they are first asked for.
class Containers {
public:
  explicit Containers(const std::optional<fs::path>& kept) : kept_(kept) {}

  bool kept() const { return kept_.has_value(); }

  fs::path of(const Bundle& bundle) {
    // Who has no identifier is known by its name.
    const std::string identifier = bundle.identifier.empty() ? bundle.name() : bundle.identifier;
    if (kept_) {
      // What the app itself has put there since its first launch is no reason to refuse it.
      const auto [known, first] = keptContainers_.try_emplace(identifier);
      if (first) {
        known->second = prepareContainer(*kept_ / identifier);
      }
      return known->second;
    }
    auto& container = containers_[identifier];
    if (!container) {
      container = std::make_unique<TemporaryContainer>();
    }
    return fs::canonical(container->path());
  }

private:
  std::optional<fs::path> kept_;
  std::map<std::string, fs::path> keptContainers_;
  std::map<std::string, std::unique_ptr<TemporaryContainer>> containers_;
};

/// One play of one scenario.
class Player {
public:
  Player(const PlayOptions& options, const Scenario& scenario, Report& report)
      : report_(report), containers_(options.containers) {
    launchOptions_.systemVersion = options.systemVersion.value_or(scenario.systemVersion.value_or("17.0"));
    launchOptions_.idiom = options.idiom.value_or(scenario.idiom.value_or("phone"));
    launchOptions_.noLibrary = options.noLibrary;
    launchOptions_.timeoutSeconds = options.timeoutSeconds;
    device_ = options.device ? prepareDevice(*options.device) : fs::canonical(temporaryDevice_.emplace().path());
  }

  Outcome play(const std::vector<Scenario::Step>& steps) {
    int launches = 0;
    for (const Scenario::Step& step : steps) {
      if (const auto* const chapter = std::get_if<Scenario::Chapter>(&step)) {
        report_.chapter(chapter->title);
      } else if (const auto* const install = std::get_if<Scenario::Install>(&step)) {
        installOnDevice(install->bundle.folder, device_);
        report_.record(
            {{"kind", "installed"}, {"app", install->bundle.name()}, {"identifier", install->bundle.identifier}});
      } else {
        const Outcome outcome = launch(std::get<Scenario::Launch>(step));
        ++launches;
        if (outcome.status != kDone) {
          return {outcome.status, "The scenario stopped at its " + ordinal(launches) + " launch: " + outcome.sentence};
        }
      }
    }
    return {kDone, "The scenario was played to its end, with " + std::to_string(launches) +
                       (launches == 1 ? " launch" : " launches")};
  }

private:
  Outcome launch(const Scenario::Launch& launch) {
    LaunchOptions options = launchOptions_;
    options.policies = launch.policies;
    options.launchUrl = launch.url;
    options.launchSource = launch.source;
    return playApp(options, launch.bundle, containers_.of(launch.bundle), containers_.kept(), device_, launch.events,
                   report_);
  }

  static std::string ordinal(int number) {
    const int last = number % 10;
    const bool teen = number % 100 / 10 == 1;
    return std::to_string(number) + (teen || last > 3 || last == 0 ? "th" : last == 1 ? "st" : last == 2 ? "nd" : "rd");
  }

  Report& report_;
  LaunchOptions launchOptions_;
  std::optional<TemporaryContainer> temporaryDevice_;
  fs::path device_;
  Containers containers_;
};

} // namespace

int play(const PlayOptions& options) {
  const Scenario scenario = readScenario(options.scenario, appsFolder());
  std::optional<HtmlReport> html;
  if (options.report) {
    html.emplace(*options.report).setTitle(scenario.title.empty() ? options.scenario.stem().string() : scenario.title);
  }
  const auto report = options.json      ? makeJsonReport()
                      : options.verbose ? makeTextReport(true, wantsColour())
                                        : makeProgressReport(wantsColour());
  return playReported(*report, html ? &*html : nullptr,
                      [&](Report& shown) {
                        const Outcome outcome = Player(options, scenario, shown).play(scenario.steps);
                        shown.played(outcome);
                        return outcome;
                      })
      .status;
}

} // namespace qvdevice

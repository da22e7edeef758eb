#include "LiveConsole.h"

#include <cstdio>
#include <system_error>

#include <poll.h>

#include "AppRun.h"
#include "Container.h"
#include "Device.h"
#include "Failure.h"
#include "FolderLock.h"
#include "Installation.h"
#include "Server.h"
#include "Session.h"

namespace fs = std::filesystem;

namespace qvdevice {

namespace {

using Json = nlohmann::ordered_json;

void print(const std::string& line) {
  std::puts(line.c_str());
  std::fflush(stdout);
}

std::string inLine(const Json& record) { return record.dump(-1, ' ', false, Json::error_handler_t::replace); }

/// A folder that somebody names, which is theirs alone while the console is there, or one for as long as that.
class Folder {
public:
  Folder(const std::optional<fs::path>& given, bool keep, const std::string& what) {
    if (!given) {
      temporary_.emplace();
      if (keep) {
        temporary_->keep();
      }
    }
    path_ = given ? *given : fs::canonical(temporary_->path());
    lock_.emplace(path_, what);
  }

  const fs::path& path() const { return path_; }

private:
  std::optional<TemporaryContainer> temporary_;
  fs::path path_;
  std::optional<FolderLock> lock_;
};

/// One console: the app's runs, one after the other, and the pages.
class LiveConsole {
public:
  LiveConsole(const ConsoleOptions& options, Bundle bundle)
      : options_(options), bundle_(std::move(bundle)),
        container_(options.container ? std::optional(prepareContainer(*options.container)) : std::nullopt, options.keep,
                   "the container"),
        device_(options.device ? std::optional(prepareDevice(*options.device)) : std::nullopt, false, "the device"),
        watch_(container_.path(), bundle_.folder.filename().string()),
        report_(makeJsonReport([this](const Json& record) { take(record); })) {
    DeviceToRunOn(device_.path(), options.installed);
  }

  int run() {
    // The first launch tells what is wrong with the app before anybody is asked to look at it.
    Launch launch = makeLaunch(options_, bundle_, container_.path(), device_.path());
    const Server server(feed_, wishes_, picture_, options_.port, 2 * std::chrono::seconds(options_.timeoutSeconds));
    tellAddress(server.address());
    Outcome outcome = live(std::move(launch));
    while (!over_ && awaitRelaunch(outcome)) {
      outcome = relaunch();
    }
    status("over", outcome);
    return outcome.status;
  }

private:
  void take(const Json& record) {
    feed_.add(record);
    if (session_) {
      session_->heard(record);
    }
    if (options_.json) {
      print(inLine(record));
    }
  }

  void tellAddress(const std::string& address) const {
    if (options_.json) {
      print(inLine({{"kind", "console"}, {"address", address}}));
    } else {
      print("The console is at " + address + "\nWhoever knows the address can use it. Ctrl-C ends it.");
    }
  }

  void status(const char* state, const std::optional<Outcome>& outcome = {}) {
    Json record{{"kind", "status"},
                {"state", state},
                {"app", bundle_.name()},
                {"identifier", bundle_.identifier},
                {"version", bundle_.version},
                {"systemVersion", options_.systemVersion},
                {"idiom", options_.idiom},
                {"defaultProtection", options_.defaultProtection},
                {"library", !options_.noLibrary},
                {"launch", launches_}};
    if (outcome) {
      record["status"] = outcome->status;
      record["sentence"] = outcome->sentence;
    }
    feed_.state(record);
  }

  Outcome live(Launch launch) {
    ++launches_;
    status("starting");
    // Ctrl-C ends the console, which then ends the app.
    launch.ownGroup = true;
    report_->begin({bundle_, options_.systemVersion, options_.idiom, options_.defaultProtection, container_.path(),
                    options_.keep || options_.container.has_value(), !options_.noLibrary});
    session_.emplace(wishes_, feed_, picture_, watch_);
    AppRun run(bundle_.name(), std::chrono::seconds(options_.timeoutSeconds), *report_);
    Outcome outcome;
    try {
      outcome = run.drive(std::move(launch), device_.path(), [&](AppProcess& app) {
        return session_->run(run, app, *report_, std::chrono::seconds(options_.timeoutSeconds),
                             [this] { status("running"); });
      });
    } catch (const std::system_error& error) {
      outcome = {kCannotStart, bundle_.name() + " does not start: " + error.what()};
    }
    over_ = session_->wantsEnd();
    session_.reset();
    if (!run.coverage().empty()) {
      report_->record(run.coverage().record());
    }
    end(outcome);
    return outcome;
  }

  Outcome relaunch() {
    try {
      return live(makeLaunch(options_, bundle_, container_.path(), device_.path()));
    } catch (const Failure& failure) {
      Outcome outcome{failure.status(), failure.what()};
      end(outcome);
      return outcome;
    }
  }

  void end(const Outcome& outcome) {
    report_->end(watch_.written(), outcome);
    tellItems(feed_, watch_);
    status("ended", outcome);
    if (!options_.json) {
      print(outcome.sentence + ".");
    }
  }

  /// Whether somebody wants the app again; false when the console is to end.
  bool awaitRelaunch(const Outcome& outcome) {
    for (;;) {
      pollfd ready[]{{signals_.descriptor(), POLLIN, 0}, {wishes_.descriptor(), POLLIN, 0}};
      if (!wishes_.waiting()) {
        ::poll(ready, 2, -1);
      }
      wishes_.heard();
      if (!signals_.take().empty() || wishes_.wantsEnd()) {
        return false;
      }
      while (const auto wish = wishes_.take()) {
        if (wish->kind == Wishes::Kind::kRelaunch) {
          wishes_.answer({});
          return true;
        }
        wishes_.answer({410, outcome.sentence});
      }
    }
  }

  SignalQueue signals_; // before any thread: none is to take a signal away
  const ConsoleOptions& options_;
  Bundle bundle_;
  Folder container_;
  Folder device_;
  ContainerWatch watch_;
  Feed feed_;
  Wishes wishes_;
  Picture picture_;
  std::unique_ptr<Report> report_;
  std::optional<Session> session_;
  int launches_ = 0;
  bool over_ = false;
};

} // namespace

int console(ConsoleOptions options) {
  if (options.app.empty()) {
    options.app = appsFolder() / "Notes.app";
    if (const fs::path manager = appsFolder() / "Manager.app"; options.installed.empty() && fs::exists(manager)) {
      options.installed.push_back(manager);
    }
  }
  Bundle bundle = openBundle(options.app);
  if (options.policies && !fs::is_regular_file(*options.policies)) {
    throw Failure(kNoInput, "there is no policies file at " + options.policies->string());
  }
  return LiveConsole(options, std::move(bundle)).run();
}

} // namespace qvdevice

#include "Scenario.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <sstream>
#include <string_view>
#include <system_error>

#include "Failure.h"
#include "NearestName.h"
#include "Policies.h"

namespace fs = std::filesystem;

namespace qvdevice {

namespace {

constexpr std::array<std::string_view, 4> kNames{"title", "device", "install", "launch"};

std::string inQuotes(std::string_view text) { return "\"" + std::string(text) + "\""; }

/// Numbers with dots between them.
bool isVersion(std::string_view text) {
  bool digitExpected = true;
  for (const char c : text) {
    const bool digit = c >= '0' && c <= '9';
    if (!digit && (c != '.' || digitExpected)) {
      return false;
    }
    digitExpected = !digit;
  }
  return !digitExpected;
}

/// Reads one file; what it has found so far is in `scenario`.
class Reader {
public:
  Reader(const fs::path& file, const fs::path& apps) : folder_(file.parent_path()), apps_(apps) {}

  void take(EventLine& line, std::string_view name) {
    if (name == "title") {
      scenario_.title = line.text("title needs a text");
    } else if (name == "device") {
      device(line);
    } else if (name == "install") {
      install(line);
    } else if (name == "launch") {
      launch(line);
    } else {
      happen(line, name);
    }
    if (const std::string_view rest = line.word(); !rest.empty()) {
      line.refuse(inQuotes(rest) + " is too much after " + std::string(name));
    }
  }

  Scenario finish(const fs::path& file) {
    if (std::none_of(scenario_.steps.begin(), scenario_.steps.end(),
                     [](const Scenario::Step& step) { return std::holds_alternative<Scenario::Launch>(step); })) {
      throw Failure(kBadInput, file.string() + " launches no app");
    }
    endLast();
    return std::move(scenario_);
  }

private:
  void device(EventLine& line) {
    if (!scenario_.steps.empty() || scenario_.systemVersion || scenario_.idiom) {
      line.refuse("what the device is must be said once, and first");
    }
    if (line.atEnd()) {
      line.refuse("device needs system VERSION, idiom phone or idiom pad");
    }
    while (!line.atEnd()) {
      const std::string_view key = line.word();
      if (key == "system" && !scenario_.systemVersion) {
        scenario_.systemVersion = line.name("system needs a version, as in 17.0");
        if (!isVersion(*scenario_.systemVersion)) {
          line.refuse("system needs a version, as in 17.0; " + inQuotes(*scenario_.systemVersion) + " is none");
        }
      } else if (key == "idiom" && !scenario_.idiom) {
        scenario_.idiom = line.name("idiom needs phone or pad");
        if (*scenario_.idiom != "phone" && *scenario_.idiom != "pad") {
          line.refuse("idiom needs phone or pad; " + inQuotes(*scenario_.idiom) + " is neither");
        }
      } else {
        line.refuse("device needs system VERSION, idiom phone or idiom pad; " + inQuotes(key) +
                    " is none of them, or " + "said again");
      }
    }
  }

  void install(EventLine& line) {
    refuseWhileOneRuns(line, "installed");
    Bundle bundle = app(line, "install needs an app");
    if (bundle.identifier.empty()) {
      line.refuse(bundle.name() + " has no identifier (CFBundleIdentifier), so it cannot be installed");
    }
    scenario_.steps.emplace_back(Scenario::Install{std::move(bundle)});
  }

  void launch(EventLine& line) {
    refuseWhileOneRuns(line, "launched");
    Scenario::Launch launch{app(line, "launch needs an app"), {}, {}, {}, {}};
    while (!line.atEnd()) {
      const std::string_view key = line.word();
      if (key == "policies" && !launch.policies) {
        launch.policies = policies(line);
      } else if (key == "url" && !launch.url) {
        launch.url = line.url("url");
      } else if (key == "from" && launch.url && !launch.source) {
        launch.source = line.name("from needs the bundle identifier of the app that asks");
      } else {
        line.refuse(inQuotes(key) +
                    " is too much after the app, unless it is \"policies\" and a file, or \"url\" and a " +
                    "URL, then \"from\" and a bundle identifier");
      }
    }
    scenario_.steps.emplace_back(std::move(launch));
  }

  void happen(EventLine& line, std::string_view name) {
    Event event = readEvent(line, name, kNames);
    if (Scenario::Launch* const running = this->running()) {
      running->events.push_back(std::move(event));
    } else if (event.kind == Event::Kind::kChapter) {
      scenario_.steps.emplace_back(Scenario::Chapter{event.title});
    } else if (last() == nullptr) {
      line.refuseAt(0, "nothing can happen to an app before one is launched");
    } else {
      line.refuseAt(0, "nothing happens to an app after " + last()->events.back().name + "; launch one first");
    }
  }

  void refuseWhileOneRuns(EventLine& line, const char* what) {
    if (const Scenario::Launch* const running = this->running()) {
      line.refuse(running->bundle.name() + " still runs; end it with terminate or ends before another app is " + what);
    }
  }

  /// The last app that was launched.
  Scenario::Launch* last() {
    for (auto step = scenario_.steps.rbegin(); step != scenario_.steps.rend(); ++step) {
      if (auto* const launch = std::get_if<Scenario::Launch>(&*step)) {
        return launch;
      }
    }
    return nullptr;
  }

  /// The same, unless it has ended.
  Scenario::Launch* running() {
    Scenario::Launch* const launch = last();
    return launch != nullptr && (launch->events.empty() || !endsApp(launch->events.back())) ? launch : nullptr;
  }

  void endLast() {
    if (Scenario::Launch* const running = this->running()) {
      running->events.push_back(terminateEvent());
    }
  }

  Bundle app(EventLine& line, const std::string& needed) {
    const std::string name = line.name(needed);
    const bool isName = name.find('/') == std::string::npos && !name.ends_with(".app");
    const fs::path path = isName ? apps_ / (name + ".app") : folder_ / name;
    std::error_code ignored;
    if (isName && !fs::exists(path, ignored)) {
      line.refuse("there is no app " + inQuotes(name) + nearestApp(name));
    }
    try {
      return openBundle(path);
    } catch (const Failure& failure) {
      line.refuse(failure.what());
    }
  }

  std::string nearestApp(const std::string& name) const {
    std::vector<std::string> names;
    std::error_code ignored;
    for (const fs::directory_entry& entry : fs::directory_iterator(apps_, ignored)) {
      if (entry.path().extension() == ".app") {
        names.push_back(entry.path().stem());
      }
    }
    std::sort(names.begin(), names.end());
    return names.empty() ? " in " + apps_.string() : "; did you mean " + inQuotes(nearestName(name, names)) + "?";
  }

  fs::path policies(EventLine& line) {
    fs::path file = folder_ / line.name("policies needs a file");
    std::ifstream stream(file, std::ios::binary);
    std::ostringstream text;
    if (!fs::is_regular_file(file) || !stream) {
      line.refuse("there is no policies file at " + file.string());
    }
    text << stream.rdbuf();
    const auto taken = zorbel::parsePolicies(text.str(), {});
    if (const auto* refusal = std::get_if<zorbel::Refusal>(&taken)) {
      throw Failure(kBadInput, file.string() + ":" + std::to_string(refusal->line) + ":" +
                                   std::to_string(refusal->column) + ": " + refusal->reason);
    }
    return file;
  }

  fs::path folder_;
  const fs::path& apps_;
  Scenario scenario_;
};

} // namespace

Scenario readScenario(const fs::path& file, const fs::path& apps) {
  Reader reader(file, apps);
  readEventLines(file, "the scenario", [&reader](EventLine& line, std::string_view name) { reader.take(line, name); });
  return reader.finish(file);
}

} // namespace qvdevice

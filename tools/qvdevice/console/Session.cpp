#include "Session.h"

#include <algorithm>
#include <string_view>

#include "Policies.h"
#include "ScreenPicture.h"
#include "WishText.h"

namespace qvdevice {

namespace {

using Json = nlohmann::ordered_json;
using Clock = AppProcess::Clock;
using namespace std::chrono_literals;

/// Between two looks at an app that does something.
constexpr auto kBetweenLooks = 150ms;
/// After an event: what it leads to at once belongs to it.
constexpr auto kSettled = 50ms;
constexpr auto kMostSettling = 500ms;
constexpr Clock::duration kExtensionsLook = 2s;
/// For an app that is busy when the console is to end.
constexpr Clock::duration kLastAnswer = 3s;
constexpr std::size_t kMostItems = 1000;

} // namespace

struct Session::Tools {
  AppRun& run;
  AppProcess& app;
  Report& report;
  Clock::duration limit;
  std::string limitText;
};

void tellItems(Feed& feed, const ContainerWatch& watch) {
  const std::vector<Item> all = watch.all();
  Json items = Json::array();
  for (std::size_t i = 0; i < std::min(all.size(), kMostItems); ++i) {
    items.push_back({{"path", all[i].path}, {"protection", all[i].protection}});
  }
  feed.state({{"kind", "files"}, {"items", std::move(items)}, {"more", all.size() - std::min(all.size(), kMostItems)}});
}

void Session::heard(const Json& record) {
  changed_ = true;
  if (record.value("kind", "") == "extension") {
    const std::string event = record.value("event", "");
    if (event == "started") {
      extension_ = Extension::kStarted;
    } else if (event == "shown") {
      extension_ = Extension::kShown;
    } else if (event != "ignored") {
      extension_ = Extension::kNone;
    }
  }
}

std::optional<Outcome> Session::run(AppRun& run, AppProcess& app, Report& report, Clock::duration limit,
                                    const std::function<void()>& started) {
  const auto seconds = std::chrono::ceil<std::chrono::seconds>(limit).count();
  const Tools tools{run, app, report, limit, std::to_string(seconds) + (seconds == 1 ? " second" : " seconds")};
  app.watch(wishes_.descriptor(), [this] { wishes_.heard(); });
  app.onSignal = [this](int) { ++endings_; };
  app.enough = [this] { return wantsEnd(); };
  if (!app.readUntil([&run] { return run.active(); }, limit)) {
    if (app.ended()) {
      return std::nullopt;
    }
    return run.hung(wantsEnd() ? "was not active yet" : "was not active after " + tools.limitText);
  }
  started();
  return serve(tools);
}

std::optional<Outcome> Session::serve(const Tools& tools) {
  while (!tools.app.ended()) {
    tools.app.readUntil([this] { return wishes_.waiting(); }, changed_ ? Clock::duration(kBetweenLooks) : 10s);
    if (wantsEnd()) {
      return endConsole(tools);
    }
    if (const auto wish = wishes_.take()) {
      if (wish->kind == Wishes::Kind::kEvent) {
        if (const auto outcome = perform(tools, *wish->event)) {
          return outcome;
        }
      } else if (wish->kind == Wishes::Kind::kRelaunch) {
        wishes_.answer({409, "the app runs; it can be started again when it has ended"});
      }
      changed_ = true;
    } else if (changed_ && !tools.app.ended() && !look(tools)) {
      return withoutAnswer(tools);
    }
  }
  return std::nullopt;
}

std::optional<Outcome> Session::perform(const Tools& tools, const Event& event) {
  tools.report.event(event);
  if (event.kind == Event::Kind::kExtension) {
    return performOnExtension(tools, event);
  }
  if (event.kind == Event::Kind::kTerminate) {
    const Outcome outcome = tools.run.terminate(tools.app, event);
    wishes_.answer({});
    return outcome;
  }
  const auto answer = tools.app.tell(event.command, tools.limit);
  if (!answer && !tools.app.ended()) {
    wishes_.answer({504, wantsEnd() ? "the console was to end before the app had answered"
                                    : tools.run.hung("gave no answer in " + tools.limitText).sentence});
    return withoutAnswer(tools);
  }
  tools.app.readUntilQuiet(kSettled, kMostSettling);
  if (!answer) {
    wishes_.answer({410, "the app ended before it answered"});
  } else {
    wishes_.answer(answer->empty() ? Reply{} : Reply{409, *answer});
  }
  return std::nullopt;
}

std::optional<Outcome> Session::performOnExtension(const Tools& tools, const Event& event) {
  if (extension_ == Extension::kNone) {
    wishes_.answer({409, "no extension runs"});
    return std::nullopt;
  }
  const bool kill = event.command["do"] == "kill";
  // The user can do nothing to what is not on the screen yet.
  if (!kill) {
    tools.app.readUntil([this] { return extension_ != Extension::kStarted; }, tools.limit);
  }
  const auto answer = kill ? tools.app.killExtension(tools.limit) : tools.app.tellExtension(event.command, tools.limit);
  if (!answer && tools.app.ended()) {
    wishes_.answer({410, "the app ended before its extension answered"});
  } else if (!answer) {
    wishes_.answer({504, wantsEnd() ? "the console was to end before the extension had answered"
                                    : "the extension gave no answer in " + tools.limitText});
  } else {
    tools.app.readUntilQuiet(kSettled, kMostSettling);
    wishes_.answer(answer->empty() ? Reply{} : Reply{409, *answer});
  }
  return std::nullopt;
}

/// The wait for an answer was cut short, unless the app has had all of its time, or has ended.
std::optional<Outcome> Session::withoutAnswer(const Tools& tools) {
  if (tools.app.ended()) {
    return std::nullopt;
  }
  return wantsEnd() ? endConsole(tools) : tools.run.hung("gave no answer in " + tools.limitText);
}

/// An app that hears ends in good order; who cannot wait for that says so once more.
std::optional<Outcome> Session::endConsole(const Tools& tools) {
  const int before = endings_;
  tools.app.enough = [this, before] { return endings_ > before; };
  if (!tools.app.readUntil([&] { return !tools.app.owesAnswer(); }, std::min(tools.limit, kLastAnswer))) {
    return tools.app.ended() ? std::nullopt : std::optional(tools.run.hung("gave no answer"));
  }
  return tools.run.terminate(tools.app, readEventText("terminate"));
}

bool Session::look(const Tools& tools) {
  changed_ = false;
  for (const char* what : {"controls", "offers", "policies", "screen"}) {
    if (wishes_.waiting()) {
      changed_ = true; // Who wants something goes first, and changes what there is to see.
      return true;
    }
    if (what == std::string_view("screen") ? !takePicture(tools) : !lookAt(tools, what)) {
      return false;
    }
  }
  lookAtExtension(tools);
  tellItems(feed_, watch_);
  return true;
}

bool Session::lookAt(const Tools& tools, const std::string& what) {
  const auto answer = tools.app.ask({{"do", what}}, tools.limit);
  if (answer && answer->refusal.empty()) {
    Json record = answer->result;
    record["kind"] = what;
    feed_.state(record);
  }
  return answer.has_value();
}

bool Session::takePicture(const Tools& tools) {
  const auto answer = askForScreen(tools.app, tools.limit);
  if (answer && answer->result.is_object()) {
    if (auto png = zorbel::decodeBase64(answer->result.value("png", ""))) {
      Json record = answer->result;
      record.erase("png");
      record["kind"] = "screen";
      record["number"] = picture_.take(std::move(*png));
      feed_.state(record);
    }
  }
  return answer.has_value();
}

/// One that owes an answer is not asked for another.
void Session::lookAtExtension(const Tools& tools) {
  Json record{{"kind", "extensionControls"}, {"shown", extension_ == Extension::kShown}};
  bool listens = tools.app.extensionListens();
  if (extension_ == Extension::kShown && listens) {
    const auto answer = tools.app.askExtension({{"do", "controls"}}, std::min(tools.limit, kExtensionsLook));
    listens = answer.has_value();
    if (answer && answer->result.is_object()) {
      record["buttons"] = answer->result.value("buttons", Json::array());
    }
  }
  record["silent"] = extension_ == Extension::kShown && !listens;
  feed_.state(record);
}

} // namespace qvdevice

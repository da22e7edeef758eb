#include "AppRun.h"

#include <algorithm>
#include <cstring>

#include <sys/wait.h>

#include "Failure.h"
#include "ScreenPicture.h"

namespace qvdevice {

/// An app that says nothing for so long has nothing more to do of its own accord.
static constexpr auto kIdle = std::chrono::milliseconds(300);
/// After an event, before the next one.
static constexpr auto kSettled = std::chrono::milliseconds(100);

// Statuses by which the device and the SDK refuse to go on, before any code of the app.
static constexpr int kDeviceRefused = 78;
static constexpr int kPoliciesRefused = 65;

static std::string at(const Event& event) {
  return event.line == 0 ? "" : "(line " + std::to_string(event.line) + " of the events) ";
}

AppRun::AppRun(std::string name, std::chrono::seconds limit, Report& report)
    : name_(std::move(name)), limit_(limit),
      limitText_(std::to_string(limit.count()) + (limit.count() == 1 ? " second" : " seconds")), report_(report) {
  stream_.onLine = [this](const std::string& text) {
    lastLine_ = text;
    report_.line(text);
  };
  stream_.onRecord = [this](const nlohmann::ordered_json& record) {
    note(record);
    report_.record(record);
  };
}

void AppRun::note(const nlohmann::ordered_json& record) {
  coverage_.note(record);
  const std::string kind = record.value("kind", "");
  if (kind == "lifecycle") {
    launched_ = true;
    active_ = active_ || record.value("event", "") == "didBecomeActive";
    ending_ = ending_ || record.value("event", "") == "willTerminate";
  } else if (kind == "sdk") {
    calls_.insert(record.value("call", ""));
    ending_ = ending_ || record.value("call", "") == "willExit";
  } else if (kind == "extension") {
    extensionSettled_ = record.value("event", "") != "started";
  }
}

Outcome AppRun::play(Launch launch, const std::filesystem::path& device, const std::vector<Event>& events) {
  coverage_.giveTo(launch);
  AppProcess app(std::move(launch), device, stream_);
  if (!app.readUntil([this] { return active_; }, limit_)) {
    return app.ended() ? endedByItself(*app.ended(), events) : hung("was not active after " + limitText_);
  }
  app.readUntilQuiet(kIdle, limit_);
  if (auto outcome = lookAtScreen(app)) {
    return *outcome;
  }
  for (Unplayed rest = events; !rest.empty(); rest = rest.subspan(1)) {
    const Event& event = rest.front();
    if (event.kind == Event::Kind::kChapter) {
      report_.chapter(event.title);
      continue;
    }
    if (app.ended() && event.kind != Event::Kind::kEnds) {
      return endedByItself(*app.ended(), rest);
    }
    report_.event(event);
    if (event.kind != Event::Kind::kAwait) {
      calls_.clear();
    }
    switch (event.kind) {
    case Event::Kind::kAwait:
      if (const auto outcome = await(app, event, rest)) {
        return *outcome;
      }
      break;
    case Event::Kind::kChapter:
      break;
    case Event::Kind::kWait:
      app.readUntil([] { return false; }, event.wait);
      break;
    case Event::Kind::kScreen:
      if (const auto outcome = takePicture(app, event, rest)) {
        return *outcome;
      }
      break;
    case Event::Kind::kTerminate:
      return terminate(app, event);
    case Event::Kind::kEnds:
      return awaitEnd(app, event);
    case Event::Kind::kExtension:
      if (const auto outcome = tellExtension(app, event, rest)) {
        return *outcome;
      }
      break;
    case Event::Kind::kCommand:
      if (const auto outcome = tell(app, event, rest)) {
        return *outcome;
      }
    }
    if (event.kind != Event::Kind::kScreen) {
      if (auto outcome = lookAtScreen(app)) {
        return *outcome;
      }
    }
  }
  return hung("was never told to end");
}

Outcome AppRun::drive(Launch launch, const std::filesystem::path& device, const Session& session) {
  coverage_.giveTo(launch);
  AppProcess app(std::move(launch), device, stream_);
  const auto outcome = session(app);
  return outcome ? *outcome : endedByItself(*app.ended(), {});
}

std::optional<Outcome> AppRun::judge(const std::string& who, const Event& event, const std::string& refusal) const {
  if (event.refused && refusal.empty()) {
    return Outcome{kAppFailed, who + " " + at(event) + "did not refuse \"" + event.name + "\""};
  }
  if (!event.refused && !refusal.empty()) {
    return Outcome{kAppFailed, who + " " + at(event) + "refused \"" + event.name + "\": " + refusal};
  }
  if (event.refused) {
    report_.record({{"kind", "refused"}, {"event", event.name}, {"reason", refusal}});
  }
  return std::nullopt;
}

std::optional<Outcome> AppRun::tell(AppProcess& app, const Event& event, Unplayed rest) {
  const auto answer = app.tell(event.command, limit_);
  if (!answer && !app.ended()) {
    return hung(at(event) + "gave no answer in " + limitText_);
  }
  if (answer) {
    if (auto outcome = judge(name_, event, *answer)) {
      return outcome;
    }
  }
  // Without an answer nobody knows whether it was the event that made the app end, or whether it came too late.
  const auto next =
      std::find_if(rest.begin() + 1, rest.end(), [](const Event& each) { return each.kind != Event::Kind::kChapter; });
  if (!answer && (next == rest.end() || next->kind != Event::Kind::kEnds)) {
    return endedByItself(*app.ended(), rest);
  }
  app.readUntilQuiet(kSettled, limit_);
  return std::nullopt;
}

std::optional<Outcome> AppRun::await(AppProcess& app, const Event& event, Unplayed rest) {
  if (!app.readUntil([&] { return calls_.contains(event.call) || app.ended(); }, limit_)) {
    return hung(at(event) + "did not ask the SDK for " + event.call + " in " + limitText_);
  }
  if (!calls_.contains(event.call)) {
    return endedByItself(*app.ended(), rest);
  }
  app.readUntilQuiet(kSettled, limit_);
  return std::nullopt;
}

std::optional<Outcome> AppRun::tellExtension(AppProcess& app, const Event& event, Unplayed rest) {
  const bool kill = event.command["do"] == "kill";
  // The user can do nothing to what is not on the screen yet.
  const bool there = kill || app.readUntil([this] { return extensionSettled_; }, limit_);
  const auto answer = kill ? app.killExtension(limit_)
                           : app.tellExtension(event.command, there ? limit_ : AppProcess::Clock::duration::zero());
  if (!answer && app.ended()) {
    return endedByItself(*app.ended(), rest);
  }
  if (!answer) {
    return Outcome{kAppHung, name_ + "'s extension " + at(event) + "gave no answer in " + limitText_};
  }
  if (auto outcome = judge(name_ + "'s extension", event, *answer)) {
    return outcome;
  }
  app.readUntilQuiet(kSettled, limit_);
  return std::nullopt;
}

std::optional<Outcome> AppRun::takePicture(AppProcess& app, const Event& event, Unplayed rest) {
  auto answer = askForScreen(app, limit_);
  if (!answer) {
    return app.ended() ? endedByItself(*app.ended(), rest) : hung(at(event) + "gave no picture in " + limitText_);
  }
  if (!answer->refusal.empty()) {
    return Outcome{kAppFailed, name_ + " " + at(event) + "refused \"" + event.name + "\": " + answer->refusal};
  }
  nlohmann::ordered_json record{{"kind", "screen"}, {"title", nullptr}};
  if (!event.title.empty()) {
    record["title"] = event.title;
  }
  record.update(answer->result);
  if (screens_ != nullptr) {
    record["file"] = screens_->write(event.title, record.value("png", ""));
  }
  report_.record(record);
  return std::nullopt;
}

std::optional<Outcome> AppRun::lookAtScreen(AppProcess& app) {
  if (!report_.wantsPictures() || app.ended()) {
    return std::nullopt;
  }
  const auto answer = askForScreen(app, limit_);
  if (!answer) {
    // Who has just been told to end may do so instead of answering; that it does is judged with the next event.
    return app.ended() ? std::nullopt : std::optional(hung("gave no picture in " + limitText_));
  }
  if (answer->refusal.empty() && answer->result != lastPicture_) {
    lastPicture_ = answer->result;
    nlohmann::ordered_json record{{"kind", "screen"}, {"title", nullptr}};
    record.update(answer->result);
    report_.record(record);
  }
  return std::nullopt;
}

Outcome AppRun::terminate(AppProcess& app, const Event& event) {
  const auto answer = app.tell(event.command, limit_);
  if (answer && !answer->empty()) {
    return {kAppFailed, name_ + " " + at(event) + "refused \"" + event.name + "\": " + *answer};
  }
  if (!app.readUntil([&app] { return app.ended().has_value(); }, limit_)) {
    return hung(at(event) + "did not end in " + limitText_);
  }
  const int status = *app.ended();
  if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) {
    return endedByItself(status, {});
  }
  return {kDone, name_ + " was told to end and did, with status 0"};
}

Outcome AppRun::awaitEnd(AppProcess& app, const Event& event) {
  if (!app.readUntil([&app] { return app.ended().has_value(); }, limit_)) {
    return hung(at(event) + "did not end by itself in " + limitText_);
  }
  return endedByItself(*app.ended(), {});
}

Outcome AppRun::endedByItself(int status, Unplayed unplayed) const {
  if (WIFSIGNALED(status)) {
    return {kAppFailed, name_ + " crashed by signal " + std::to_string(WTERMSIG(status)) + " (" +
                            strsignal(WTERMSIG(status)) + ")"};
  }
  const int code = WEXITSTATUS(status);
  if (!launched_ && (code == kDeviceRefused || code == kPoliciesRefused)) {
    return {code == kPoliciesRefused ? kBadInput : kCannotStart, name_ + " could not start: " + lastLine_};
  }
  if (code != 0 || !ending_) {
    return {kAppFailed, name_ + " ended by itself with status " + std::to_string(code) + ", which a real app does not"};
  }
  const auto missed = std::find_if(unplayed.begin(), unplayed.end(), [](const Event& event) {
    return event.line != 0 && event.kind != Event::Kind::kChapter;
  });
  if (missed != unplayed.end()) {
    return {kAppFailed, name_ + " ended by itself in good order, but before line " + std::to_string(missed->line) +
                            " of the events (\"" + missed->name + "\") was done"};
  }
  return {kDone, name_ + " ended by itself in good order, with status 0"};
}

Outcome AppRun::hung(const std::string& how) const { return {kAppHung, name_ + " " + how + " and was ended"}; }

} // namespace qvdevice

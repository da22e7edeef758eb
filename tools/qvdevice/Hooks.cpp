#include "Hooks.h"

#include <array>
#include <chrono>
#include <cstdio>
#include <system_error>

#include "AppProcess.h"
#include "Container.h"
#include "Failure.h"
#include "HookList.h"
#include "HookReasons.h"
#include "Installation.h"

namespace fs = std::filesystem;

namespace qvdevice {

namespace {

using Json = nlohmann::ordered_json;

/// Those at which the device's set of hooked methods changes; what holds for one holds up to the next.
constexpr std::array kReleases{"8.2", "9", "10", "11", "13", "17"};

std::string seconds(int count) { return std::to_string(count) + (count == 1 ? " second" : " seconds"); }

HookList hooksIn(const Bundle& bundle, const LaunchOptions& options) {
  const TemporaryContainer container;
  const Launch launch = makeLaunch(options, bundle, fs::canonical(container.path()), {});
  const auto limit = std::chrono::seconds(options.timeoutSeconds);
  bool active = false;
  std::string last;
  Stream stream;
  stream.onLine = [&](const std::string& line) { last = line; };
  stream.onRecord = [&](const Json& record) {
    active = active || (record.value("kind", "") == "lifecycle" && record.value("event", "") == "didBecomeActive");
  };
  AppProcess app(launch, {}, stream);
  std::optional<Answer> answer;
  if (app.readUntil([&] { return active; }, limit)) {
    answer = app.ask({{"do", "hooks"}}, limit);
  }
  if (!answer && app.ended()) {
    throw Failure(kAppFailed, bundle.name() + " ended before it could be asked" + (last.empty() ? "" : ": " + last));
  }
  if (!answer) {
    throw Failure(kAppHung, bundle.name() + " gave no answer in " + seconds(options.timeoutSeconds) + " and was ended");
  }
  if (!answer->refusal.empty()) {
    throw Failure(kAppFailed, bundle.name() + " does not tell its hooks: " + answer->refusal);
  }
  HookList hooks;
  for (const Json& hook : answer->result.at("hooks")) {
    hooks.push_back(completed(hook));
  }
  return hooks;
}

HooksByRelease hooksOnAll(const Bundle& bundle, LaunchOptions options) {
  HooksByRelease all;
  for (const char* release : kReleases) {
    options.systemVersion = release;
    all.emplace_back(release, hooksIn(bundle, options));
  }
  return all;
}

void print(const std::string& text) { std::fwrite(text.data(), 1, text.size(), stdout); }

void printJson(const HookList& hooks) {
  for (const Json& hook : hooks) {
    Json line{{"kind", "hook"}};
    line.update(hook);
    if (const HookReason* reason = reasonOf(hook)) {
      line["does"] = reason->does;
      line["asks"] = reason->asks.empty() ? Json() : Json(reason->asks);
    }
    print(line.dump(-1, ' ', false, Json::error_handler_t::replace) + "\n");
  }
}

} // namespace

int hooks(const HooksOptions& options) {
  const Bundle bundle =
      openBundle(options.app.value_or((programFolder() / ".." / "apps" / "Notes.app").lexically_normal()));
  try {
    if (options.markdown) {
      const HooksByRelease all = hooksOnAll(bundle, options);
      std::string problems;
      for (const std::string& problem : problemsOf(all)) {
        problems += "\n  " + problem;
      }
      if (!problems.empty()) {
        throw Failure(kInternal, "the published list and the library do not fit together:" + problems);
      }
      print(markdownOf(all));
      return kDone;
    }
    const HookList hooks = hooksIn(bundle, options);
    if (options.json) {
      printJson(hooks);
    } else {
      print(bundle.name() + " on a simulated " + (options.idiom == "pad" ? "tablet" : "phone") + ", system " +
            options.systemVersion + "\n\n" + textOf(hooks));
    }
    return kDone;
  } catch (const std::system_error& error) {
    throw Failure(kCannotStart, bundle.name() + " does not start: " + error.what());
  }
}

} // namespace qvdevice

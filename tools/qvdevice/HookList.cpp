#include "HookList.h"

#include <algorithm>
#include <iterator>

#include "HookReasons.h"

namespace qvdevice {

namespace {

using Json = nlohmann::ordered_json;

std::string methodOf(const Json& hook) {
  return (hook.value("classMethod", false) ? "+" : "-") + hook.value("selector", "");
}

std::string counted(std::size_t count, const std::string& state) { return std::to_string(count) + " " + state; }

/// "42 hooks: 37 installed, 5 absent"
std::string summaryOf(const HookList& hooks) {
  std::string text;
  for (const char* state : {"installed", "absent", "refused", "replaced"}) {
    const auto count =
        std::count_if(hooks.begin(), hooks.end(), [&](const Json& hook) { return hook.value("state", "") == state; });
    if (count != 0) {
      text += (text.empty() ? ": " : ", ") + counted(static_cast<std::size_t>(count), state);
    }
  }
  return std::to_string(hooks.size()) + (hooks.size() == 1 ? " hook" : " hooks") + text + "\n";
}

/// Each class's hooks together, the classes in the order in which they were met.
HookList byClass(const HookList& hooks) {
  std::vector<std::string> classes;
  for (const Json& hook : hooks) {
    const std::string cls = hook.value("class", "");
    if (std::find(classes.begin(), classes.end(), cls) == classes.end()) {
      classes.push_back(cls);
    }
  }
  HookList sorted;
  for (const std::string& cls : classes) {
    std::copy_if(hooks.begin(), hooks.end(), std::back_inserter(sorted),
                 [&](const Json& hook) { return hook.value("class", "") == cls; });
  }
  return sorted;
}

const Json* find(const HookList& hooks, const HookReason& reason) {
  const auto hook = std::find_if(hooks.begin(), hooks.end(), [&](const Json& each) {
    return hookedClassOf(each) == reason.cls && each.value("replacement", "") == reason.replacement;
  });
  return hook == hooks.end() ? nullptr : &*hook;
}

bool has(const HookList& hooks, const HookReason& reason) {
  const Json* hook = find(hooks, reason);
  return hook != nullptr && hook->value("state", "") != "absent";
}

/// The releases that have the hooked method.
std::string releasesOf(const HooksByRelease& releases, const HookReason& reason) {
  std::vector<std::string> names;
  std::vector<bool> present;
  for (const auto& [release, hooks] : releases) {
    names.push_back(release);
    present.push_back(has(hooks, reason));
  }
  return rangeOf(names, present);
}

bool isOfClass(const HooksByRelease& releases, const HookReason& reason) {
  return std::any_of(releases.begin(), releases.end(), [&](const auto& release) {
    const Json* hook = find(release.second, reason);
    return hook != nullptr && hook->value("classMethod", false);
  });
}

std::string rowOf(const HooksByRelease& releases, const HookReason& reason) {
  return "| `" + std::string(isOfClass(releases, reason) ? "+" : "-") + std::string(reason.selector) + "` | " +
         releasesOf(releases, reason) + " | " + std::string(reason.does) + " | " +
         std::string(reason.asks.empty() ? "nothing" : reason.asks) + " |\n";
}

} // namespace

std::string textOf(const HookList& given) {
  const HookList hooks = byClass(given);
  std::size_t width = 0;
  for (const Json& hook : hooks) {
    if (hook.contains("why")) {
      width = std::max(width, methodOf(hook).size());
    }
  }
  // A reason stands beside the selector, unless that is one of the very long ones.
  width = std::min<std::size_t>(width, 48);
  std::string text;
  std::string last;
  for (const Json& hook : hooks) {
    if (const std::string cls = hook.value("class", ""); cls != last) {
      const Json installer = hook.value("installer", Json());
      text += cls + (installer.is_string() ? "   " + installer.get<std::string>() : "") + "\n";
      last = cls;
    }
    std::string state = hook.value("state", "");
    state.resize(std::max<std::size_t>(state.size(), 11), ' ');
    std::string method = methodOf(hook);
    if (hook.contains("why")) {
      method.resize(std::max(method.size(), width), ' ');
      method += "   " + hook.value("why", "");
    }
    text.append("  ").append(state).append(method).append("\n");
  }
  return text + "\n" + summaryOf(hooks);
}

std::vector<std::string> problemsOf(const HooksByRelease& releases) {
  std::vector<std::string> problems;
  const auto say = [&](const std::string& problem) {
    if (std::find(problems.begin(), problems.end(), problem) == problems.end()) {
      problems.push_back(problem);
    }
  };
  for (const auto& [release, hooks] : releases) {
    for (const Json& hook : hooks) {
      const std::string name = hookedClassOf(hook) + " " + hook.value("replacement", "");
      const HookReason* reason = reasonOf(hook);
      if (reason == nullptr) {
        say("nobody says why there is a hook " + name);
      } else if (hook.value("selector", "") != reason->selector) {
        say(name + " is said to stand in front of " + std::string(reason->selector) + ", but it is " +
            hook.value("selector", ""));
      }
    }
  }
  for (const HookReason& reason : hookReasons()) {
    const auto seen = [&](const auto& release) { return has(release.second, reason); };
    if (std::none_of(releases.begin(), releases.end(), seen)) {
      say("no release has a hook " + std::string(reason.cls) + " " + std::string(reason.replacement) +
          ", of which it is said why");
    }
    if (std::none_of(hookedClasses().begin(), hookedClasses().end(),
                     [&](const HookedClass& each) { return each.name == reason.cls; })) {
      say("nobody says why " + std::string(reason.cls) + " is hooked");
    }
  }
  return problems;
}

std::string rangeOf(const std::vector<std::string>& releases, const std::vector<bool>& present) {
  std::string text;
  for (std::size_t start = 0; start < present.size();) {
    std::size_t end = start;
    while (end < present.size() && present[end] == present[start]) {
      ++end;
    }
    if (present[start]) {
      const std::string from = start == 0 ? "" : "from " + releases[start];
      const std::string before = end == present.size() ? "" : "before " + releases[end];
      text += (text.empty() ? "" : "; ") +
              (from.empty() && before.empty() ? "all" : from + (from.empty() || before.empty() ? "" : ", ") + before);
    }
    start = end;
  }
  return text.empty() ? "none" : text;
}

std::string markdownOf(const HooksByRelease& releases) {
  std::string text = R"(# What the library intercepts

Every method that the library puts one of its own in front of, and why. No other method is replaced, and what the
platform answers is changed only as it says here. A decision is made anew for each question; without the SDK, or with one
that is not ready, it is no.

The releases are those of the simulated device, from )" +
                     releases.front().first + R"( on. The delegate's methods are there on all of them.

This list is written by `qvdevice hooks --markdown`, from what a running app shows; a test compares the two.
`qvdevice hooks APP` tells what has become of each hook in an app: one may be absent on a release, refused because the
method has another signature than the replacement, or replaced by another library that came later.
)";
  for (const HookedClass& cls : hookedClasses()) {
    text += "\n## " + std::string(cls.name) + "\n\n" + std::string(cls.why) + " Installed by `" +
            std::string(cls.installer) +
            "`.\n\n| method | releases | what the library does, and why | what it asks before it acts |\n"
            "|---|---|---|---|\n";
    for (const HookReason& reason : hookReasons()) {
      if (reason.cls == cls.name) {
        text += rowOf(releases, reason);
      }
    }
  }
  return text;
}

} // namespace qvdevice

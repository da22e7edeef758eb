// Why the library intercepts what it does, for people. Which hooks there are, and what has become of each, is nowhere
// written down: it is seen in a process that runs.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include <nlohmann/json.hpp>

namespace qvdevice {

/// The hooks of one platform class.
struct HookedClass {
  std::string_view name; // kDelegate for the class of whatever delegate the app has
  std::string_view installer;
  std::string_view why;
};

/// One hook: what it does and, if it decides by a policy, what it asks before it acts.
struct HookReason {
  std::string_view cls;
  std::string_view selector;
  std::string_view replacement;
  std::string_view does;
  std::string_view asks{};
};

/// What stands for the class of the app's delegate.
inline constexpr std::string_view kDelegate = "the application's delegate";

std::span<const HookedClass> hookedClasses();
std::span<const HookReason> hookReasons();

/// The class of a hook as the tables name it.
std::string hookedClassOf(const nlohmann::ordered_json& hook);

/// What the tables know of a hook that a process has told of; null when they know nothing.
const HookReason* reasonOf(const nlohmann::ordered_json& hook);

/// The hook with what only the tables know: the platform's selector where it cannot be told from the replacement's, and
/// its installer where that is no function of its own.
nlohmann::ordered_json completed(nlohmann::ordered_json hook);

} // namespace qvdevice

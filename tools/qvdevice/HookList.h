// The library's hooks as text, and as the published list of all that the library intercepts.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <nlohmann/json.hpp>

namespace qvdevice {

/// The hooks that a process told of.
using HookList = std::vector<nlohmann::ordered_json>;

/// What they are on each of several releases, the oldest first.
using HooksByRelease = std::vector<std::pair<std::string, HookList>>;

/// For people: by class, with the state of each.
std::string textOf(const HookList& hooks);

/// What does not fit together, a sentence each: a hook of which nobody says why, and one that nobody has seen.
std::vector<std::string> problemsOf(const HooksByRelease& releases);

/// The releases that have a method, of those that were looked at: "all", "from 11", "before 13", "from 11, before 13".
std::string rangeOf(const std::vector<std::string>& releases, const std::vector<bool>& present);

/// The published list, in Markdown.
std::string markdownOf(const HooksByRelease& releases);

} // namespace qvdevice

// What came of a step, in a few words.
#pragma once

#include <string>
#include <vector>

#include <nlohmann/json.hpp>

namespace qvdevice {

/// One thing that came of a step.
struct Finding {
  enum class Tone { kPlain, kAllowed, kRefused, kProtected };
  Tone tone;
  std::string text;
  /// More about it, for who wants to know: who asked for a decision.
  std::string detail{};
  /// How many decisions it tells of; they differ in what they were about.
  int decisions = 0;
};

/// What the records of a step say, the same thing once: decisions and the policies behind them, what was offered, what
/// left the app, what was refused, what the user was told. The last thing that the app said, when there is nothing
/// else.
std::vector<Finding> findingsOf(const std::vector<nlohmann::ordered_json>& records);

} // namespace qvdevice

// The kinds of processor that the device has code for.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

/// Those that this machine can play, the best one first; the one without vector instructions, where there is code for
/// it, last.
std::vector<std::int64_t> targets();

/// Its name.
std::string name(std::int64_t target);

/// While this lives, the device uses the code for one kind.
class OnTarget {
public:
  explicit OnTarget(std::int64_t target);
  OnTarget(const OnTarget&) = delete;
  OnTarget& operator=(const OnTarget&) = delete;
  ~OnTarget();
};

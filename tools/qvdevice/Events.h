#pragma once

#include <chrono>
#include <filesystem>
#include <string>
#include <vector>

namespace qvdevice {

/// One thing that happens to the app: a step of its life, or time that passes.
struct Event {
  std::string name; // as the events file spells it
  std::string verb; // what the app is told; empty for a wait
  std::chrono::milliseconds wait{0};
  std::size_t line = 0; // in the events file; 0 for the script that qvdevice follows without one
};

/// What happens when nobody says otherwise: the app is used, put away and ended.
std::vector<Event> defaultEvents();

/// Reads an events file: one event a line, "#" starts a comment. Throws Failure with file, line and column of the first
/// thing that is not an event.
std::vector<Event> readEvents(const std::filesystem::path& file);

} // namespace qvdevice

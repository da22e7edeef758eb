#pragma once

#include <chrono>
#include <filesystem>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

namespace qvdevice {

/// One thing that happens to the app, or that must happen of its own accord.
struct Event {
  enum class Kind {
    kCommand,   // the app is told something and answers
    kExtension, // an app extension is
    kAwait,     // the app is to ask the SDK for something
    kWait,      // time passes
    kTerminate, // the app is told to end
    kEnds       // the app ends by itself
  };

  Kind kind;
  std::string name;               // as the events file spells it
  nlohmann::ordered_json command; // what the app is told: "do" and what belongs to it
  std::chrono::milliseconds wait{0};
  std::string call;     // at the SDK, that is awaited
  std::size_t line = 0; // in the events file; 0 for what is not in one
};

/// What happens when nobody says otherwise: the app is used, put away and ended.
std::vector<Event> defaultEvents();

/// Reads an events file: one event a line, "#" starts a comment. The app is told to end after the last of them, unless
/// that one is its end. Throws Failure with file, line and column of the first thing that is not an event.
std::vector<Event> readEvents(const std::filesystem::path& file);

} // namespace qvdevice

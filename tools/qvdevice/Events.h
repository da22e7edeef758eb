#pragma once

#include <chrono>
#include <filesystem>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include <nlohmann/json.hpp>

#include "EventLine.h"

namespace qvdevice {

/// One thing that happens to the app, or that must happen of its own accord.
struct Event {
  enum class Kind {
    kCommand,   // the app is told something and answers
    kExtension, // an app extension is
    kAwait,     // the app is to ask the SDK for something
    kWait,      // time passes
    kChapter,   // nothing: what follows belongs together, and has a title
    kScreen,    // a picture of the screen is taken
    kTerminate, // the app is told to end
    kEnds       // the app ends by itself
  };

  Kind kind;
  std::string name;               // as the events file spells it
  nlohmann::ordered_json command; // what the app is told: "do" and what belongs to it
  std::chrono::milliseconds wait{0};
  std::string call;  // at the SDK, that is awaited
  std::string title; // of a picture or a chapter; a picture may have none
  /// The app, or the device, must not do it.
  bool refused = false;
  std::size_t line = 0; // in the events file; 0 for what is not in one
};

/// What happens when nobody says otherwise: the app is used, put away and ended.
std::vector<Event> defaultEvents();

/// Whether nothing can happen to an app after it.
bool endsApp(const Event& event);
/// The system's own end of an app.
Event terminateEvent();

/// Reads the event that begins with `name`, and all that belongs to it. `others` are what else may begin a line there,
/// for the sake of who has mistyped one. Throws Failure with file, line and column of what is no event.
Event readEvent(EventLine& line, std::string_view name, std::span<const std::string_view> others = {});

/// Reads a file line by line: `take` gets each one that says something, with its first word, which has been read.
/// `what` the file is goes into the sentence when it cannot be read. Throws Failure.
void readEventLines(const std::filesystem::path& file, const std::string& what,
                    const std::function<void(EventLine& line, std::string_view name)>& take);

/// Reads an events file: one event a line, "#" starts a comment. The app is told to end after the last of them, unless
/// that one is its end. Throws Failure with file, line and column of the first thing that is not an event.
std::vector<Event> readEvents(const std::filesystem::path& file);

} // namespace qvdevice

#include "WishText.h"

#include "EventLine.h"
#include "Failure.h"

namespace qvdevice {

using Json = nlohmann::json;
using Kind = Wishes::Kind;

static constexpr std::string_view kEvents = "/events";
static constexpr std::string_view kRelaunch = "/relaunch";
static constexpr std::string_view kQuit = "/quit";

[[noreturn]] static void refuse(const std::string& reason) { throw Failure(kBadInput, reason); }

bool isWish(std::string_view path) { return path == kEvents || path == kRelaunch || path == kQuit; }

static Json objectIn(const std::string& body) {
  try {
    Json object = Json::parse(body);
    if (object.is_object()) {
      return object;
    }
  } catch (const Json::exception& error) {
    const std::string message = error.what();
    const std::size_t place = message.find("at line");
    refuse("the request is not JSON: " + (place == std::string::npos ? message : message.substr(place)));
  }
  refuse("the request must be a JSON object");
}

Event readEventText(const std::string& text) {
  static const std::filesystem::path kNoFile;
  EventLine line(kNoFile, 0, text);
  if (const std::size_t end = text.find_first_of("\n\r"); end != std::string::npos) {
    line.refuseAt(end, "an event is one line");
  }
  const std::string_view name = line.word();
  if (name.empty()) {
    line.refuse("there is no event here");
  }
  return readEvent(line, name);
}

static Event eventIn(const Json& object) {
  const auto line = object.find("event");
  if (line == object.end() || !line->is_string() || object.size() != 1) {
    refuse("the request must be {\"event\": a line as in an events file}");
  }
  Event event = readEventText(line->get<std::string>());
  const bool command = event.kind == Event::Kind::kCommand || event.kind == Event::Kind::kExtension;
  if (event.refused) {
    refuse("\"refused\" is for events files: here an event that is refused says so");
  }
  if (!command && event.kind != Event::Kind::kTerminate) {
    refuse("\"" + event.name + "\" is for events files: here somebody watches and knows when to go on");
  }
  return event;
}

Wishes::Wish wishIn(std::string_view path, const std::string& body) {
  const Json object = objectIn(body);
  if (path == kEvents) {
    return {Kind::kEvent, eventIn(object)};
  }
  if (!object.empty()) {
    refuse("the request must be an empty JSON object");
  }
  return {path == kQuit ? Kind::kQuit : Kind::kRelaunch, {}};
}

} // namespace qvdevice

#include "Words.h"

#include <algorithm>
#include <map>
#include <regex>

namespace qvdevice {

using Json = nlohmann::ordered_json;

std::string textOf(const Json& object, const char* key) {
  const auto value = object.find(key);
  return value != object.end() && value->is_string() ? value->get<std::string>() : std::string();
}

std::string withoutLogPrefix(const std::string& line) {
  static const std::regex kPrefix(R"(^\d{4}-\d\d-\d\d \d\d:\d\d:\d\d\.\d+ [^\[]*\[\d+(:[0-9a-fx]+)?\] )");
  return std::regex_replace(line, kPrefix, "");
}

std::string inWords(const std::string& protection) {
  static const std::map<std::string, std::string> kWords{
      {"NSFileProtectionNone", "none"},
      {"NSFileProtectionComplete", "complete"},
      {"NSFileProtectionCompleteUnlessOpen", "complete unless open"},
      {"NSFileProtectionCompleteUntilFirstUserAuthentication", "complete until first user authentication"}};
  const auto words = kWords.find(protection);
  return words == kWords.end() ? protection : words->second;
}

std::string lifecycleInWords(const std::string& event) {
  static const std::map<std::string, std::string> kWords{{"willFinishLaunching", "the app is being launched"},
                                                         {"didFinishLaunching", "the app has been launched"},
                                                         {"didBecomeActive", "the app is active: it is on the screen"},
                                                         {"willResignActive", "the app is no longer active"},
                                                         {"didEnterBackground", "the app is in the background"},
                                                         {"willEnterForeground", "the app comes to the foreground"},
                                                         {"willTerminate", "the app is about to end"}};
  const auto words = kWords.find(event);
  return words == kWords.end() ? event : words->second;
}

static std::string dumped(const Json& value) { return value.dump(-1, ' ', false, Json::error_handler_t::replace); }

std::string callInWords(const Json& record) {
  std::string arguments;
  for (const auto& [name, value] : record.items()) {
    if (name != "kind" && name != "t" && name != "call") {
      arguments += (arguments.empty() ? "" : ", ") + name + " ";
      arguments += value.is_null() ? "nil" : value.is_string() ? value.get<std::string>() : dumped(value);
    }
  }
  return textOf(record, "call") + (arguments.empty() ? "" : " (" + arguments + ")");
}

std::string resultInWords(const Json& result) {
  return result == Json(1)   ? "applied"
         : result == Json(0) ? "not applied"
         : result == Json(2) ? "error"
                             : dumped(result);
}

std::string wayOutInWords(const Json& record) {
  const std::string way = textOf(record, "way");
  const std::string what = textOf(record, "name");
  if (way == "print") {
    return what + " is printed";
  }
  if (way == "pasteboard") {
    return what + " is copied to the pasteboard";
  }
  return what + " is handed to " + textOf(record, "to");
}

std::string offerInWords(const Json& record) {
  static const std::map<std::string, std::string> kShown{
      {"sheet", "the share sheet"}, {"menu", "the edit menu"}, {"openInMenu", "the open-in menu"}};
  const auto shown = kShown.find(textOf(record, "kind"));
  if (shown == kShown.end() || !record.contains("offered")) {
    return {};
  }
  std::string entries;
  for (const Json& each : record["offered"]) {
    entries += (entries.empty() ? "" : ", ") + (each.is_string() ? each.get<std::string>() : dumped(each));
  }
  return shown->second + " offers " + (entries.empty() ? "nothing" : entries);
}

static std::string setInWords(const Json& command) {
  std::string words = "the administrator sets";
  for (const auto& [key, value] : command["values"].items()) {
    words += " " + key + " to " + dumped(value);
  }
  return words + (command.contains("message") ? ", with the message " + dumped(command["message"]) : "");
}

std::string extensionInWords(const Json& record) {
  static const std::map<std::string, std::string> kWords{
      {"started", "has a process of its own"},
      {"shown", "shows its view controller"},
      {"completed", "has answered"},
      {"cancelled", "has cancelled"},
      {"interrupted", "is interrupted"},
      {"failed", "cannot be shown"},
      {"ignored", "has answered once more, which is ignored"},
      {"ended", "is no longer needed and ends"},
  };
  const auto words = kWords.find(textOf(record, "event"));
  const std::string reason = textOf(record, "reason");
  return textOf(record, "identifier") + " " + (words == kWords.end() ? textOf(record, "event") : words->second) +
         (reason.empty() ? "" : ": " + reason);
}

static std::string numberInWords(const Json& number) {
  std::string text = dumped(number);
  return text.ends_with(".0") ? text.substr(0, text.size() - 2) : text;
}

static std::string windowInWords(const Json& command) {
  const std::string wish = textOf(command, "wish");
  const std::string window = "the window " + dumped(command["name"]);
  if (wish == "show") {
    return "the app shows " + window +
           (command.contains("level") ? " at level " + numberInWords(command["level"]) : "");
  }
  return wish == "key" ? "the app makes " + window + " key" : "the app " + wish + "s " + window;
}

std::vector<std::string> windowsInWords(const Json& record) {
  std::vector<std::string> rows{"level     visible  key  window"};
  const auto column = [](std::string text, std::size_t width) {
    text.resize(std::max(width, text.size() + 1), ' ');
    return text;
  };
  const auto yesOrNo = [](const Json& window, const char* key) { return window.value(key, false) ? "yes" : "no"; };
  for (const Json& window : record.value("windows", Json::array())) {
    std::string controllers;
    for (const Json& each : window.value("controllers", Json::array())) {
      controllers += (controllers.empty() ? ": " : " > ") + (each.is_string() ? each.get<std::string>() : dumped(each));
    }
    rows.push_back(column(numberInWords(window.value("level", Json(0))), 10) + column(yesOrNo(window, "visible"), 9) +
                   column(yesOrNo(window, "key"), 5) + textOf(window, "class") + controllers);
  }
  return rows;
}

std::string answerInWords(const Json& record) {
  return textOf(record, "question") + ": " + (record.value("answer", false) ? "yes" : "no");
}

std::string rotationInWords(const Json& record) {
  return textOf(record, "asked") +
         (record.value("allowed", false) ? " lets the screen turn to " : " does not let the screen turn to ") +
         textOf(record, "orientation");
}

static constexpr std::string_view kInExtension = "extension ";

std::string pictureInWords(const Json& record) {
  const std::string file = textOf(record, "file");
  const std::string title = textOf(record, "title");
  return (!file.empty()    ? file
          : !title.empty() ? dumped(title)
                           : "a picture") +
         " (" + dumped(record["width"]) + "x" + dumped(record["height"]) + ")";
}

std::string eventInWords(const Event& event) {
  const Json& command = event.command;
  if (event.refused) {
    Event tried = event;
    tried.refused = false;
    return eventInWords(tried) + ", which is to be refused";
  }
  if (event.name.starts_with(kInExtension)) {
    Event inside = event;
    inside.name = event.name.substr(kInExtension.size());
    return inside.name == "kill" ? "the system ends the extension's process"
                                 : "in the extension " + eventInWords(inside);
  }
  if (event.kind == Event::Kind::kWait) {
    return "nothing for " + std::to_string(event.wait.count()) + " ms";
  }
  if (event.kind == Event::Kind::kAwait) {
    return "the app has to ask the SDK for " + event.call;
  }
  if (event.kind == Event::Kind::kScreen) {
    return "the screen is looked at" + (event.title.empty() ? "" : ": " + event.title);
  }
  if (event.kind == Event::Kind::kEnds) {
    return "the app has to end by itself now";
  }
  static const std::map<std::string, std::string> kSteps{{"activate", "the app gets the user's attention"},
                                                         {"resign", "the app loses the user's attention"},
                                                         {"background", "the user leaves the app"},
                                                         {"foreground", "the user comes back to the app"},
                                                         {"terminate", "the system ends the app"}};
  if (const auto step = kSteps.find(event.name); step != kSteps.end()) {
    return step->second;
  }
  if (event.name == "set") {
    return setInWords(command);
  }
  if (event.name == "open") {
    const std::string source = textOf(command, "sourceApplication");
    return "the system hands over the URL " + textOf(command, "url") + (source.empty() ? "" : " from " + source);
  }
  if (event.name == "touch") {
    return "the user touches the screen" +
           (command.contains("x") ? " at " + dumped(command["x"]) + ", " + dumped(command["y"]) : "");
  }
  if (event.name == "tap") {
    return "the user taps " + dumped(command["title"]);
  }
  if (event.name == "perform") {
    return "the user asks for " + textOf(command, "action");
  }
  if (event.name == "menu") {
    return "the user asks for the edit menu";
  }
  if (event.name == "cancel") {
    return "the user puts away what is offered";
  }
  if (event.name == "choose") {
    return "the user chooses " + dumped(command["title"]);
  }
  if (event.name == "type") {
    return "the user types " + dumped(command["text"]);
  }
  if (event.name == "dictate") {
    return "the user dictates " + dumped(command["text"]);
  }
  if (event.name == "keyboard") {
    const std::string wish = textOf(command, "wish");
    return wish == "show"   ? "the keyboard comes up"
           : wish == "hide" ? "the user puts the keyboard away"
                            : "the user goes back to the keyboard";
  }
  if (event.name == "alert") {
    return "the app shows the alert " + dumped(command["title"]);
  }
  if (event.name == "window") {
    return windowInWords(command);
  }
  if (event.name == "windows") {
    return "the windows, the frontmost first";
  }
  if (event.name == "rotate") {
    return "the user turns the device: " + textOf(command, "orientation");
  }
  if (event.name == "authenticate") {
    return "the SDK wants the user's passcode";
  }
  if (event.name == "ask") {
    return "the SDK asks " + textOf(command, "question");
  }
  return event.name;
}

} // namespace qvdevice

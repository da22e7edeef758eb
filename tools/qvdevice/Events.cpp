#include "Events.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <fstream>
#include <string_view>

#include "Failure.h"
#include "NearestName.h"
#include "Policies.h"

namespace qvdevice {

namespace {

using Json = nlohmann::ordered_json;
using Kind = Event::Kind;

constexpr int kLongestWait = 600'000;

std::string quoted(std::string_view text) { return "\"" + std::string(text) + "\""; }

template <class Number> bool parsed(std::string_view word, Number& number) {
  const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), number);
  return !word.empty() && error == std::errc() && end == word.data() + word.size();
}

// Each reads what belongs to one event, behind its name.

void readWait(EventLine& line, Event& event) {
  const std::string_view word = line.word();
  int value = -1;
  if (!parsed(word, value) || value < 0 || value > kLongestWait) {
    line.refuse("wait needs milliseconds, a whole number up to " + std::to_string(kLongestWait) +
                (word.empty() ? "" : "; " + quoted(word) + " is none"));
  }
  event.wait = std::chrono::milliseconds(value);
}

void readSet(EventLine& line, Event& event) {
  const std::string key(line.word());
  if (key.empty()) {
    line.refuse("set needs a key of the policies and its value in JSON");
  }
  const std::size_t place = line.place();
  Json values{{key, line.json("set " + key + " needs a value in JSON")}};
  // What the SDK would refuse while the app runs is better known before.
  const auto taken = zorbel::takeValues(values, {});
  if (const auto* refusal = std::get_if<zorbel::Refusal>(&taken)) {
    line.refuseAt(place, refusal->reason);
  }
  event.command["values"] = std::move(values);
  if (line.atEnd()) {
    return;
  }
  const Json message = line.json("");
  if (!message.is_string()) {
    line.refuse("the message must be a string in JSON, in quotes");
  }
  if (key != "authState") {
    line.refuse("only authState has a message");
  }
  event.command["message"] = message;
}

void readOpen(EventLine& line, Event& event) {
  event.command["url"] = line.url("open");
  if (line.atEnd()) {
    return;
  }
  if (const std::string_view from = line.word(); from != "from") {
    line.refuse(quoted(from) + " is too much after the URL, unless it is \"from\" and a bundle identifier");
  }
  const std::string_view source = line.word();
  if (source.empty()) {
    line.refuse("from needs the bundle identifier of the app that asks");
  }
  event.command["sourceApplication"] = source;
}

void readTouch(EventLine& line, Event& event) {
  if (line.atEnd()) {
    return;
  }
  for (const char* key : {"x", "y"}) {
    const std::string_view word = line.word();
    double value = 0;
    if (!parsed(word, value) || !std::isfinite(value)) {
      line.refuse("touch needs no place or two numbers, X and Y" +
                  (word.empty() ? "" : "; " + quoted(word) + " is none"));
    }
    event.command[key] = value;
  }
}

bool isSelector(std::string_view word) {
  return !word.empty() && word.front() != ':' && (word.front() < '0' || word.front() > '9') &&
         std::all_of(word.begin(), word.end(), [](char c) {
           return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' || c == ':';
         });
}

void readPerform(EventLine& line, Event& event) {
  const std::string_view word = line.word();
  if (!isSelector(word)) {
    line.refuse("perform needs a selector, as in copy:" + (word.empty() ? "" : "; " + quoted(word) + " is none"));
  }
  event.command["action"] = word;
}

void readTap(EventLine& line, Event& event) { event.command["title"] = line.text("tap needs a button's title"); }

void readChoose(EventLine& line, Event& event) {
  event.command["title"] = line.text("choose needs what is to be chosen");
}

void readType(EventLine& line, Event& event) { event.command["text"] = line.text(event.name + " needs a text"); }

void readExtension(EventLine& line, Event& event);
void readRefused(EventLine& line, Event& event);

void readAlert(EventLine& line, Event& event) { event.command["title"] = line.text("alert needs a title"); }

/// One word of a list; `what` says what it is.
std::string oneOf(EventLine& line, const std::string& what, std::initializer_list<std::string_view> words) {
  const std::string_view word = line.word();
  if (std::find(words.begin(), words.end(), word) != words.end()) {
    return std::string(word);
  }
  std::string list;
  for (const std::string_view each : words) {
    list += (list.empty() ? "" : ", ") + std::string(each);
  }
  line.refuse(what + " (" + list + ")" + (word.empty() ? "" : "; " + quoted(word) + " is none"));
}

void readAwait(EventLine& line, Event& event) {
  const std::string_view word = line.word();
  if (!isSelector(word)) {
    line.refuse("await needs a call at the SDK, as in displayMessage:" +
                (word.empty() ? "" : "; " + quoted(word) + " is none"));
  }
  event.call = word;
}

void readChapter(EventLine& line, Event& event) { event.title = line.text("chapter needs a title"); }

void readAsk(EventLine& line, Event& event) {
  event.command["question"] =
      oneOf(line, "ask needs a question", {"isPasscodeExtensionActive", "canAppDisplayPasscodeExtension"});
}

void readRotate(EventLine& line, Event& event) {
  event.command["orientation"] =
      oneOf(line, "rotate needs the way in which the device is held",
            {"portrait", "portraitUpsideDown", "landscapeLeft", "landscapeRight", "faceUp", "faceDown"});
}

void readKeyboard(EventLine& line, Event& event) {
  if (!line.atEnd()) {
    event.command["wish"] = oneOf(line, "keyboard needs nothing or one word", {"show", "hide"});
  }
}

double readLevel(EventLine& line) {
  const std::string_view word = line.word();
  if (word == "normal" || word == "statusBar" || word == "alert") {
    return word == "normal" ? 0 : word == "alert" ? 2000 : 1000;
  }
  double level = 0;
  if (!parsed(word, level) || !std::isfinite(level)) {
    line.refuse("a window's level is a number, normal, statusBar or alert; " + quoted(word) + " is none");
  }
  return level;
}

void readWindow(EventLine& line, Event& event) {
  const std::string wish = oneOf(line, "window needs what happens to it", {"show", "key", "hide", "close"});
  event.command["wish"] = wish;
  const std::string_view name = line.word();
  if (name.empty()) {
    line.refuse("window " + wish + " needs the window's name");
  }
  event.command["name"] = name;
  if (wish == "show" && !line.atEnd()) {
    event.command["level"] = readLevel(line);
  }
}

void readScreen(EventLine& line, Event& event) {
  if (!line.atEnd()) {
    event.title = line.text("the title of a picture is not empty");
  }
}

void readNothing(EventLine&, Event&) {}

struct Form {
  std::string_view name;
  Kind kind;
  std::string_view verb; // that the app is told
  void (*read)(EventLine&, Event&);
};

constexpr std::array kForms{Form{"activate", Kind::kCommand, "becomeActive", readNothing},
                            Form{"resign", Kind::kCommand, "resignActive", readNothing},
                            Form{"background", Kind::kCommand, "enterBackground", readNothing},
                            Form{"foreground", Kind::kCommand, "enterForeground", readNothing},
                            Form{"set", Kind::kCommand, "set", readSet},
                            Form{"open", Kind::kCommand, "openURL", readOpen},
                            Form{"touch", Kind::kCommand, "touch", readTouch},
                            Form{"tap", Kind::kCommand, "tap", readTap},
                            Form{"perform", Kind::kCommand, "perform", readPerform},
                            Form{"menu", Kind::kCommand, "menu", readNothing},
                            Form{"choose", Kind::kCommand, "choose", readChoose},
                            Form{"cancel", Kind::kCommand, "cancel", readNothing},
                            Form{"refused", Kind::kCommand, "", readRefused},
                            Form{"type", Kind::kCommand, "type", readType},
                            Form{"dictate", Kind::kCommand, "dictate", readType},
                            Form{"extension", Kind::kExtension, "", readExtension},
                            Form{"keyboard", Kind::kCommand, "keyboard", readKeyboard},
                            Form{"alert", Kind::kCommand, "alert", readAlert},
                            Form{"window", Kind::kCommand, "window", readWindow},
                            Form{"windows", Kind::kCommand, "windows", readNothing},
                            Form{"rotate", Kind::kCommand, "rotate", readRotate},
                            Form{"authenticate", Kind::kCommand, "authenticate", readNothing},
                            Form{"ask", Kind::kCommand, "ask", readAsk},
                            Form{"await", Kind::kAwait, "", readAwait},
                            Form{"wait", Kind::kWait, "", readWait},
                            Form{"chapter", Kind::kChapter, "", readChapter},
                            Form{"ends", Kind::kEnds, "", readNothing},
                            Form{"screen", Kind::kScreen, "", readScreen},
                            Form{"terminate", Kind::kTerminate, "terminate", readNothing}};

const Form& formNamed(EventLine& line, std::string_view name, std::span<const std::string_view> others) {
  const auto* const form = std::find_if(kForms.begin(), kForms.end(), [name](const Form& f) { return f.name == name; });
  if (form != kForms.end()) {
    return *form;
  }
  std::vector<std::string_view> names(others.begin(), others.end());
  std::transform(kForms.begin(), kForms.end(), std::back_inserter(names), [](const Form& f) { return f.name; });
  line.refuse("there is no event " + quoted(name) + "; did you mean " + quoted(nearestName(name, names)) + "?");
}

/// What can be done to an extension: some of what can be done to an app, and the end of its process.
void readExtension(EventLine& line, Event& event) {
  constexpr std::array kDone{
      Form{"touch", Kind::kExtension, "touch", readTouch}, Form{"tap", Kind::kExtension, "tap", readTap},
      Form{"type", Kind::kExtension, "type", readType}, Form{"kill", Kind::kExtension, "kill", readNothing}};
  const std::string_view name = line.word();
  const auto* const form = std::find_if(kDone.begin(), kDone.end(), [name](const Form& f) { return f.name == name; });
  if (form == kDone.end()) {
    line.refuse("extension needs touch, tap, type or kill" + (name.empty() ? "" : "; " + quoted(name) + " is none"));
  }
  event.name += " " + std::string(name);
  event.command["do"] = form->verb;
  form->read(line, event);
}

/// Another event, that is not to be.
void readRefused(EventLine& line, Event& event) {
  const std::string_view name = line.word();
  if (name.empty()) {
    line.refuse("refused needs the event that is to be refused");
  }
  const Form& form = formNamed(line, name, {});
  if ((form.kind != Kind::kCommand && form.kind != Kind::kExtension) || form.read == readRefused) {
    line.refuse("nobody can refuse " + quoted(name));
  }
  event.kind = form.kind;
  event.name = name;
  event.refused = true;
  if (!form.verb.empty()) {
    event.command["do"] = form.verb;
  }
  form.read(line, event);
}

Event makeEvent(std::string name, Kind kind, std::string_view verb, std::size_t line = 0) {
  Event event{kind, std::move(name), {}, {}, {}, {}, false, line};
  if (!verb.empty()) {
    event.command["do"] = verb;
  }
  return event;
}

bool isUtf8(const std::string& text) {
  try {
    return !Json(text).dump().empty();
  } catch (const Json::type_error&) {
    return false;
  }
}

} // namespace

bool endsApp(const Event& event) { return event.kind == Kind::kTerminate || event.kind == Kind::kEnds; }

Event terminateEvent() { return makeEvent("terminate", Kind::kTerminate, "terminate"); }

std::vector<Event> defaultEvents() {
  return {makeEvent("resign", Kind::kCommand, "resignActive"),
          makeEvent("background", Kind::kCommand, "enterBackground"), terminateEvent()};
}

Event readEvent(EventLine& line, std::string_view name, std::span<const std::string_view> others) {
  const Form& form = formNamed(line, name, others);
  Event event = makeEvent(std::string(name), form.kind, form.verb, line.number());
  form.read(line, event);
  if (const std::string_view rest = line.word(); !rest.empty()) {
    line.refuse(quoted(rest) + " is too much after " + event.name);
  }
  return event;
}

void readEventLines(const std::filesystem::path& file, const std::string& what,
                    const std::function<void(EventLine&, std::string_view)>& take) {
  std::ifstream stream(file);
  std::string text;
  std::size_t number = 0;
  while (std::getline(stream, text)) {
    EventLine line(file, ++number, text);
    if (!isUtf8(text)) {
      line.refuse("this line is not UTF-8");
    }
    if (const std::string_view name = line.word(); !name.empty()) {
      take(line, name);
    }
  }
  if (!stream.eof() || std::filesystem::is_directory(file)) {
    throw Failure(kNoInput, what + " " + file.string() + " cannot be read");
  }
}

std::vector<Event> readEvents(const std::filesystem::path& file) {
  std::vector<Event> events;
  readEventLines(file, "the events file", [&events](EventLine& line, std::string_view name) {
    if (!events.empty() && endsApp(events.back())) {
      line.refuse("nothing happens to an app after " + events.back().name);
    }
    events.push_back(readEvent(line, name));
  });
  if (events.empty() || !endsApp(events.back())) {
    events.push_back(terminateEvent());
  }
  return events;
}

} // namespace qvdevice

#include "Events.h"

#include <array>
#include <charconv>
#include <fstream>
#include <string_view>

#include "Failure.h"
#include "NearestName.h"

namespace qvdevice {

namespace {

struct Verb {
  std::string_view name;
  std::string_view verb;
};

constexpr std::array<Verb, 5> kVerbs{{{"activate", "becomeActive"},
                                      {"resign", "resignActive"},
                                      {"background", "enterBackground"},
                                      {"foreground", "enterForeground"},
                                      {"terminate", "terminate"}}};
constexpr std::array<std::string_view, 6> kNames{"activate", "resign", "background", "foreground", "terminate", "wait"};
constexpr std::string_view kBlank = " \t\r";
constexpr int kLongestWait = 600'000;

/// One line of an events file while it is being read.
class Line {
public:
  Line(const std::filesystem::path& file, std::size_t number, std::string_view text)
      : file_(file), number_(number), text_(text.substr(0, text.find('#'))) {}

  std::string_view next() {
    start_ = text_.find_first_not_of(kBlank, end_);
    if (start_ == std::string_view::npos) {
      start_ = end_;
      return {};
    }
    end_ = std::min(text_.find_first_of(kBlank, start_), text_.size());
    return text_.substr(start_, end_ - start_);
  }

  /// Refuses the word that next() gave last.
  [[noreturn]] void refuse(const std::string& reason) const {
    throw Failure(kBadInput,
                  file_.string() + ":" + std::to_string(number_) + ":" + std::to_string(start_ + 1) + ": " + reason);
  }

  std::size_t number() const { return number_; }

private:
  const std::filesystem::path& file_;
  std::size_t number_;
  std::string_view text_;
  std::size_t start_ = 0;
  std::size_t end_ = 0;
};

std::chrono::milliseconds readWait(Line& line) {
  const std::string_view word = line.next();
  int value = -1;
  const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), value);
  if (word.empty() || error != std::errc() || end != word.data() + word.size() || value < 0 || value > kLongestWait) {
    line.refuse("wait needs milliseconds, a whole number up to " + std::to_string(kLongestWait) +
                (word.empty() ? "" : "; \"" + std::string(word) + "\" is none"));
  }
  return std::chrono::milliseconds(value);
}

Event readEvent(Line& line, std::string_view name) {
  Event event{std::string(name), "", {}, line.number()};
  if (name == "wait") {
    event.wait = readWait(line);
  } else {
    for (const Verb& verb : kVerbs) {
      if (verb.name == name) {
        event.verb = verb.verb;
      }
    }
    if (event.verb.empty()) {
      line.refuse("there is no event \"" + std::string(name) + "\"; did you mean \"" +
                  std::string(nearestName(name, kNames)) + "\"?");
    }
  }
  if (const std::string_view rest = line.next(); !rest.empty()) {
    line.refuse("\"" + std::string(rest) + "\" is too much after " + event.name);
  }
  return event;
}

} // namespace

std::vector<Event> defaultEvents() {
  return {{"resign", "resignActive"}, {"background", "enterBackground"}, {"terminate", "terminate"}};
}

std::vector<Event> readEvents(const std::filesystem::path& file) {
  std::ifstream stream(file);
  std::vector<Event> events;
  std::string text;
  std::size_t number = 0;
  for (; std::getline(stream, text);) {
    Line line(file, ++number, text);
    const std::string_view name = line.next();
    if (name.empty()) {
      continue;
    }
    if (!events.empty() && events.back().verb == "terminate") {
      line.refuse("nothing happens to an app after terminate");
    }
    events.push_back(readEvent(line, name));
  }
  if (!stream.eof() || std::filesystem::is_directory(file)) {
    throw Failure(kNoInput, "the events file " + file.string() + " cannot be read");
  }
  if (events.empty() || events.back().verb != "terminate") {
    events.push_back({"terminate", "terminate"});
  }
  return events;
}

} // namespace qvdevice

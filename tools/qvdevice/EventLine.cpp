#include "EventLine.h"

#include <algorithm>

#include "Failure.h"

namespace qvdevice {

static constexpr std::string_view kBlank = " \t\r";

/// The parser's own words after "... at line 1, column 2: ".
static std::string reasonOf(const nlohmann::json::parse_error& error) {
  const std::string message = error.what();
  const std::size_t colon = message.find(": ", message.find("column"));
  return "not JSON: " + (colon == std::string::npos ? message : message.substr(colon + 2));
}

static bool hasScheme(std::string_view url) {
  const auto colon = std::find(url.begin(), url.end(), ':');
  const auto isLetter = [](char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); };
  return colon != url.end() && isLetter(url.front()) && std::all_of(url.begin(), colon, [&](char c) {
           return isLetter(c) || (c >= '0' && c <= '9') || c == '+' || c == '-' || c == '.';
         });
}

bool EventLine::atEnd() {
  const std::size_t next = text_.find_first_not_of(kBlank, end_);
  if (next == std::string_view::npos || (text_[next] == '#' && (next == 0 || next > end_))) {
    start_ = end_;
    return true;
  }
  start_ = end_ = next;
  return false;
}

std::string_view EventLine::word() {
  if (atEnd()) {
    return {};
  }
  end_ = std::min(text_.find_first_of(kBlank, start_), text_.size());
  return text_.substr(start_, end_ - start_);
}

/// The bracket or quote that closes the value at start_; of a value without one, its last character. What is never
/// closed takes all that is left.
std::size_t EventLine::endOfJson() const {
  int depth = 0;
  bool quoted = false;
  for (std::size_t at = start_; at < text_.size(); ++at) {
    const char c = text_[at];
    if (quoted) {
      at += c == '\\' ? 1 : 0;
      quoted = c != '"';
    } else if (c == '"') {
      quoted = true;
    } else if (c == '{' || c == '[') {
      ++depth;
    } else if (c == '}' || c == ']') {
      --depth;
    } else if (depth == 0 && kBlank.find(c) != std::string_view::npos) {
      return at;
    }
    if (!quoted && depth <= 0 && (c == '"' || c == '}' || c == ']')) {
      return at + 1;
    }
  }
  return text_.size();
}

nlohmann::ordered_json EventLine::json(const std::string& needed) {
  if (atEnd()) {
    refuse(needed);
  }
  end_ = endOfJson();
  try {
    return nlohmann::ordered_json::parse(text_.substr(start_, end_ - start_));
  } catch (const nlohmann::json::parse_error& error) {
    refuseAt(start_ + (error.byte == 0 ? 0 : error.byte - 1), reasonOf(error));
  } catch (const nlohmann::json::out_of_range&) {
    refuse("there is a number in it that is too large");
  }
}

std::string EventLine::name(const std::string& needed) {
  if (atEnd()) {
    refuse(needed);
  }
  std::string name = text_[start_] == '"' ? json(needed).get<std::string>() : std::string(word());
  if (name.empty()) {
    refuse(needed);
  }
  return name;
}

std::string_view EventLine::url(const std::string& what) {
  const std::string_view url = word();
  if (!hasScheme(url)) {
    refuse(what + " needs a URL with a scheme" + (url.empty() ? "" : "; \"" + std::string(url) + "\" is none"));
  }
  return url;
}

std::string EventLine::text(const std::string& needed) {
  if (atEnd()) {
    refuse(needed);
  }
  std::string text;
  if (text_[start_] == '"') {
    text = json(needed).get<std::string>();
  } else {
    const std::size_t begin = start_;
    while (!word().empty()) {
    }
    text = text_.substr(begin, end_ - begin);
    start_ = begin;
  }
  if (text.empty()) {
    refuse(needed);
  }
  return text;
}

void EventLine::refuseAt(std::size_t place, const std::string& reason) const {
  const std::string column = std::to_string(place + 1);
  const std::string where =
      file_.empty() ? "column " + column : file_.string() + ":" + std::to_string(number_) + ":" + column;
  throw Failure(kBadInput, where + ": " + reason);
}

} // namespace qvdevice

#include "Policies.h"

#include <algorithm>
#include <array>
#include <limits>
#include <string_view>

#include "NearestName.h"

namespace zorbel {

namespace {

using Json = nlohmann::json;

constexpr std::array<std::string_view, 14> kKeys{
    "ready",        "readyToTerminate",         "checkInRequested", "authState",    "managedPolicy",
    "openInPolicy", "openInWhitelist",          "pasteboardPolicy", "printPolicy",  "config",
    "appInfo",      "zbPasteboardTypePrefixes", "appSchemes",       "delegateProxy"};

std::string describe(const Json& value) {
  switch (value.type()) {
  case Json::value_t::null:
    return "null";
  case Json::value_t::object:
    return "an object";
  case Json::value_t::array:
    return "an array";
  case Json::value_t::string:
    return "a string";
  case Json::value_t::boolean:
    return value.get<bool>() ? "true" : "false";
  default:
    return "the number " + value.dump();
  }
}

std::string mustBe(const std::string& key, const std::string& what, const Json& value) {
  return key + " must be " + what + ", not " + describe(value);
}

// Each takes one value and answers an empty text, or the reason why it does not.

std::string take(bool& to, const std::string& key, const Json& value) {
  if (!value.is_boolean()) {
    return mustBe(key, "true or false", value);
  }
  to = value.get<bool>();
  return {};
}

std::string take(std::int64_t& to, const std::string& key, const Json& value) {
  if (!value.is_number_integer()) {
    return mustBe(key, "a whole number", value);
  }
  if (value.is_number_unsigned() && value.get<std::uint64_t>() > std::numeric_limits<std::int64_t>::max()) {
    return key + " is too large: " + value.dump();
  }
  to = value.get<std::int64_t>();
  return {};
}

std::string take(std::vector<std::string>& to, const std::string& key, const Json& value) {
  if (!value.is_array()) {
    return mustBe(key, "an array of strings", value);
  }
  for (const Json& element : value) {
    if (!element.is_string()) {
      return mustBe(key, "an array of strings", value) + " with " + describe(element) + " in it";
    }
  }
  to = value.get<std::vector<std::string>>();
  return {};
}

std::string take(Json& to, const std::string& key, const Json& value) {
  if (!value.is_object()) {
    return mustBe(key, "an object", value);
  }
  to = value;
  return {};
}

std::string checkData(const std::string& key, const Json& value) {
  for (const auto& [name, member] : value.items()) {
    const std::string path = value.is_object() ? key + "." + name : key + "[" + name + "]";
    if (value.is_object() && value.size() == 1 && name == "base64") {
      return member.is_string() && decodeBase64(member.get<std::string>()) ? "" : path + " is not base64";
    }
    if (member.is_structured()) {
      if (std::string reason = checkData(path, member); !reason.empty()) {
        return reason;
      }
    }
  }
  return {};
}

std::string takeKey(Policies& to, const std::string& key, const Json& value) {
  if (key == "ready") return take(to.ready, key, value);
  if (key == "readyToTerminate") return take(to.readyToTerminate, key, value);
  if (key == "checkInRequested") return take(to.checkInRequested, key, value);
  if (key == "delegateProxy") return take(to.delegateProxy, key, value);
  if (key == "authState") return take(to.authState, key, value);
  if (key == "managedPolicy") return take(to.managedPolicy, key, value);
  if (key == "openInPolicy") return take(to.openInPolicy, key, value);
  if (key == "pasteboardPolicy") return take(to.pasteboardPolicy, key, value);
  if (key == "printPolicy") return take(to.printPolicy, key, value);
  if (key == "openInWhitelist") return take(to.openInWhitelist.emplace(), key, value);
  if (key == "zbPasteboardTypePrefixes") return take(to.zbPasteboardTypePrefixes, key, value);
  if (key == "appSchemes") return take(to.appSchemes, key, value);
  if (key == "config") return take(to.config, key, value);
  if (key == "appInfo") {
    const std::string reason = take(to.appInfo, key, value);
    return reason.empty() ? checkData(key, value) : reason;
  }
  return "unknown key \"" + key + "\"; did you mean \"" + std::string(nearestName(key, kKeys)) + "\"?";
}

Refusal refusalAt(const std::string& text, std::size_t offset, std::string reason) {
  const auto place = text.begin() + static_cast<std::ptrdiff_t>(std::min(offset, text.size()));
  const auto line = std::count(text.begin(), place, '\n');
  const auto start = std::find(std::make_reverse_iterator(place), text.rend(), '\n').base();
  return {static_cast<std::size_t>(line) + 1, static_cast<std::size_t>(place - start) + 1, std::move(reason)};
}

/// Characters of a text, and how far the one who takes them has come.
struct Cursor {
  using iterator_category = std::input_iterator_tag;
  using value_type = char;
  using difference_type = std::ptrdiff_t;
  using pointer = const char*;
  using reference = const char&;

  const char* at;
  std::size_t* taken;

  const char& operator*() const { return *at; }
  Cursor& operator++() {
    ++at;
    ++*taken;
    return *this;
  }
  Cursor operator++(int) {
    const Cursor before = *this;
    ++*this;
    return before;
  }
  bool operator==(const Cursor& other) const { return at == other.at; }
};

/// Goes through the file once to learn where each key of the outermost object stands, which the parsed value does
/// not tell any more.
class KeyFinder : public nlohmann::json_sax<Json> {
public:
  explicit KeyFinder(const std::string& text) : text_(text) {}

  std::optional<Refusal> find() {
    if (!Json::sax_parse(Cursor{text_.data(), &taken_}, Cursor{text_.data() + text_.size(), &taken_}, this)) {
      return refusal_;
    }
    return std::nullopt;
  }

  const std::vector<std::pair<std::string, std::size_t>>& keys() const { return keys_; }

  bool null() override { return true; }
  bool boolean(bool) override { return true; }
  bool number_integer(number_integer_t) override { return true; }
  bool number_unsigned(number_unsigned_t) override { return true; }
  bool number_float(number_float_t, const string_t&) override { return true; }
  bool string(string_t&) override { return true; }
  bool binary(binary_t&) override { return true; }
  bool start_object(std::size_t) override { return ++depth_, true; }
  bool end_object() override { return --depth_, true; }
  bool start_array(std::size_t) override { return ++depth_, true; }
  bool end_array() override { return --depth_, true; }

  bool key(string_t& name) override {
    if (depth_ != 1) {
      return true;
    }
    const std::size_t place = openingQuote();
    for (const auto& [known, where] : keys_) {
      if (known == name) {
        refusal_ = refusalAt(text_, place, "\"" + name + "\" is given twice");
        return false;
      }
    }
    keys_.emplace_back(name, place);
    return true;
  }

  bool parse_error(std::size_t position, const std::string&, const nlohmann::detail::exception& error) override {
    // The parser's own words after "... at line 1, column 2: ".
    const std::string message = error.what();
    const std::size_t colon = message.find(": ", message.find("column"));
    refusal_ = refusalAt(text_, position == 0 ? 0 : position - 1,
                         "not JSON: " + (colon == std::string::npos ? message : message.substr(colon + 2)));
    return false;
  }

private:
  /// The quote that opens the string whose closing quote has just been taken.
  std::size_t openingQuote() const {
    for (std::size_t quote = text_.rfind('"', taken_ - 2);; quote = text_.rfind('"', quote - 1)) {
      std::size_t backslashes = 0;
      while (backslashes < quote && text_[quote - backslashes - 1] == '\\') {
        ++backslashes;
      }
      if (backslashes % 2 == 0) {
        return quote;
      }
    }
  }

  const std::string& text_;
  std::size_t taken_ = 0;
  int depth_ = 0;
  std::vector<std::pair<std::string, std::size_t>> keys_;
  Refusal refusal_{};
};

} // namespace

std::optional<std::string> decodeBase64(const std::string& text) {
  static constexpr std::string_view kAlphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  if (text.size() % 4 != 0) {
    return std::nullopt;
  }
  const std::size_t padding = text.ends_with("==") ? 2 : text.ends_with('=') ? 1 : 0;
  std::string data;
  std::uint32_t bits = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const std::size_t digit = i < text.size() - padding ? kAlphabet.find(text[i]) : 0;
    if (digit == std::string_view::npos) {
      return std::nullopt;
    }
    bits = bits << 6 | static_cast<std::uint32_t>(digit);
    if (i % 4 == 3) {
      data +=
          {static_cast<char>(bits >> 16 & 0xff), static_cast<char>(bits >> 8 & 0xff), static_cast<char>(bits & 0xff)};
      bits = 0;
    }
  }
  data.resize(data.size() - padding);
  return data;
}

Taken takeValues(const Json& values, Policies base) {
  if (!values.is_object()) {
    return Refusal{0, 0, "the policies must be an object, not " + describe(values)};
  }
  for (const auto& [key, value] : values.items()) {
    if (std::string reason = takeKey(base, key, value); !reason.empty()) {
      return Refusal{0, 0, std::move(reason)};
    }
  }
  return base;
}

Json valuesOf(const Policies& policies) {
  Json values{{"ready", policies.ready},
              {"readyToTerminate", policies.readyToTerminate},
              {"checkInRequested", policies.checkInRequested},
              {"authState", policies.authState},
              {"managedPolicy", policies.managedPolicy},
              {"openInPolicy", policies.openInPolicy},
              {"pasteboardPolicy", policies.pasteboardPolicy},
              {"printPolicy", policies.printPolicy},
              {"zbPasteboardTypePrefixes", policies.zbPasteboardTypePrefixes},
              {"appSchemes", policies.appSchemes},
              {"delegateProxy", policies.delegateProxy}};
  if (policies.openInWhitelist) values["openInWhitelist"] = *policies.openInWhitelist;
  if (policies.config.is_object()) values["config"] = policies.config;
  if (policies.appInfo.is_object()) values["appInfo"] = policies.appInfo;
  return values;
}

Taken parsePolicies(const std::string& text, Policies base) {
  KeyFinder finder(text);
  if (const auto refusal = finder.find()) {
    return *refusal;
  }
  const Json all = Json::parse(text);
  if (!all.is_object()) {
    return refusalAt(text, std::min(text.find_first_not_of(" \t\r\n"), text.size()),
                     "the policies must be an object, not " + describe(all));
  }
  for (const auto& [key, place] : finder.keys()) {
    if (std::string reason = takeKey(base, key, all.at(key)); !reason.empty()) {
      return refusalAt(text, place, std::move(reason));
    }
  }
  return base;
}

} // namespace zorbel

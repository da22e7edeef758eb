#include "container/Settings.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <nlohmann/json.hpp>

#include "container/Refusal.h"

namespace qvdevice {

namespace {

using Json = nlohmann::json;

constexpr std::array<std::string_view, 2> kIdioms = {"phone", "pad"};
constexpr std::array<std::string_view, 5> kProtections = {
    "NSFileProtectionNone", "NSFileProtectionComplete", "NSFileProtectionCompleteUnlessOpen",
    "NSFileProtectionCompleteUntilFirstUserAuthentication", "absent"};

template <std::size_t N> std::string listed(const std::array<std::string_view, N>& choices) {
  std::string text;
  for (const std::string_view choice : choices) {
    if (!text.empty()) text += ", ";
    text.append(choice);
  }
  return text;
}

template <std::size_t N> bool isOneOf(const std::string& value, const std::array<std::string_view, N>& choices) {
  return std::find(choices.begin(), choices.end(), value) != choices.end();
}

/// Numbers with dots between them, as in "17.0" or "9.3.5".
bool isVersion(const std::string& text) {
  bool digitExpected = true;
  for (const char c : text) {
    if (c >= '0' && c <= '9') {
      digitExpected = false;
    } else if (c == '.' && !digitExpected) {
      digitExpected = true;
    } else {
      return false;
    }
  }
  return !digitExpected;
}

/// An empty text when the setting was taken, the reason when not.
std::string take(Settings& settings, const std::string& key, const std::string& value) {
  if (key == "systemVersion") {
    if (!isVersion(value)) return "systemVersion is \"" + value + "\"; it must be numbers with dots, as in \"17.0\"";
    settings.systemVersion = value;
  } else if (key == "idiom") {
    if (!isOneOf(value, kIdioms)) return "idiom is \"" + value + "\"; it may be " + listed(kIdioms);
    settings.idiom = value;
  } else if (key == "defaultProtection") {
    if (!isOneOf(value, kProtections))
      return "defaultProtection is \"" + value + "\"; it may be " + listed(kProtections);
    settings.defaultProtection = value;
  } else {
    return "unknown key \"" + key +
           "\"; the keys are systemVersion, idiom, defaultProtection, terminateWithSuccess, "
           "persistentDomainNames, printingAvailable";
  }
  return {};
}

std::string take(Settings& settings, const std::string& key, const Json& value) {
  const auto inText = [&] { return value.dump(-1, ' ', true, Json::error_handler_t::replace); };
  bool* const either = key == "terminateWithSuccess"    ? &settings.terminateWithSuccess
                       : key == "persistentDomainNames" ? &settings.persistentDomainNames
                       : key == "printingAvailable"     ? &settings.printingAvailable
                                                        : nullptr;
  if (either) {
    if (!value.is_boolean()) return key + " must be true or false, not " + inText();
    *either = value.get<bool>();
    return {};
  }
  if (!value.is_string()) return key + " must be a string, not " + inText();
  return take(settings, key, value.get_ref<const std::string&>());
}

Settings checkedSettings() {
  Settings settings;
  const char* text = std::getenv("QVDEVICE_SETTINGS");
  std::string error;
  if (text != nullptr && !parseSettings(text, settings, error)) {
    refuse("the device's settings (QVDEVICE_SETTINGS) are refused: " + error);
  }
  return settings;
}

} // namespace

bool parseSettings(std::string_view text, Settings& settings, std::string& error) {
  Json object;
  try {
    object = Json::parse(text);
  } catch (const Json::parse_error& problem) {
    error = "not JSON, at byte " + std::to_string(problem.byte);
    return false;
  }
  if (!object.is_object()) {
    error = std::string("a JSON object is expected, not ") + (object.is_array() ? "an " : "a ") + object.type_name();
    return false;
  }
  Settings read;
  for (const auto& [key, value] : object.items()) {
    error = take(read, key, value);
    if (!error.empty()) return false;
  }
  settings = read;
  return true;
}

bool isSystemVersionAtLeast(std::string_view version) {
  const std::string& ours = settings().systemVersion;
  const char* a = ours.c_str();
  const std::string theirs(version);
  const char* b = theirs.c_str();
  while (*a != '\0' || *b != '\0') {
    char* end = nullptr;
    const unsigned long left = std::strtoul(a, &end, 10);
    a = *end == '.' ? end + 1 : end;
    const unsigned long right = std::strtoul(b, &end, 10);
    b = *end == '.' ? end + 1 : end;
    if (left != right) return left > right;
  }
  return true;
}

const Settings& settings() {
  static const Settings& all = *new Settings(checkedSettings());
  return all;
}

} // namespace qvdevice

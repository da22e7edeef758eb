#include "container/Launch.h"

#include <cstdlib>

#include "container/Refusal.h"
#include "container/Url.h"

namespace qvdevice {

namespace {

using Json = nlohmann::json;

std::string inText(const Json& value) { return value.dump(-1, ' ', true, Json::error_handler_t::replace); }

/// An empty text when the value was taken, the reason when not.
std::string take(Launch& launch, const std::string& key, const Json& value) {
  if (key == "url") {
    if (!value.is_string()) return "url must be a string, not " + inText(value);
    launch.url = value.get<std::string>();
    if (const std::string_view problem = urlProblem(*launch.url); !problem.empty()) {
      return inText(value).append(problem);
    }
  } else if (key == "sourceApplication") {
    if (value.is_null()) return {};
    if (!value.is_string()) return "sourceApplication must be a string, not " + inText(value);
    launch.sourceApplication = value.get<std::string>();
    if (launch.sourceApplication->empty()) return "sourceApplication is empty";
  } else if (key == "annotation") {
    launch.annotation = value;
  } else {
    return "unknown key " + inText(key) + "; the keys are url, sourceApplication, annotation";
  }
  return {};
}

Launch checkedLaunch() {
  Launch launch;
  const char* text = std::getenv("QVDEVICE_LAUNCH");
  std::string error;
  if (text != nullptr && !parseLaunch(text, launch, error)) {
    refuse("the app's launch (QVDEVICE_LAUNCH) is refused: " + error);
  }
  return launch;
}

} // namespace

bool parseLaunch(std::string_view text, Launch& launch, std::string& error) {
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
  Launch read;
  for (const auto& [key, value] : object.items()) {
    error = take(read, key, value);
    if (!error.empty()) return false;
  }
  if (!read.url && (read.sourceApplication || !read.annotation.is_null())) {
    error = "without a url there is no sourceApplication and no annotation";
    return false;
  }
  launch = read;
  return true;
}

const Launch& launch() {
  static const Launch& all = *new Launch(checkedLaunch());
  return all;
}

} // namespace qvdevice

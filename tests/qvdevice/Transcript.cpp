#include "Transcript.h"

#include <algorithm>
#include <regex>

#include "Program.h"

namespace {

using nlohmann::json;

std::string valueOf(const json& value) {
  if (value.is_null()) {
    return "nil";
  }
  return value.is_string() ? value.get<std::string>() : value.dump();
}

/// The object's fields but those named, sorted by their names.
std::string fieldsOf(const json& object, const std::vector<std::string>& without) {
  std::string text;
  for (const auto& [name, value] : object.items()) {
    if (std::find(without.begin(), without.end(), name) == without.end()) {
      text += " " + name + "=" + valueOf(value);
    }
  }
  return text;
}

/// The line for one object of the program's output; empty for one that is not told.
std::string lineOf(const json& object, int level) {
  const std::string kind = object["kind"];
  if (kind == "log") {
    const std::string text = object["text"];
    if (object["level"] > level || text.starts_with("[ZorbelWrapper]")) {
      return "";
    }
    static const std::regex address("<(\\w+): 0x[0-9a-f]+>");
    return "log " + object["level"].dump() + " " + std::regex_replace(text, address, "<$1>");
  }
  if (kind == "sdk" && object["call"] != "setLoggingToFileSuspended:") {
    return "sdk " + object["call"].get<std::string>() + fieldsOf(object, {"kind", "call", "t"});
  }
  if (kind == "event" && object["event"] != "ends") {
    return "event " + object["event"].get<std::string>() + fieldsOf(object, {"kind", "event", "line", "t"});
  }
  if (kind == "lifecycle") {
    return "device " + object["event"].get<std::string>();
  }
  if (kind == "output") {
    return "app " + object["text"].get<std::string>();
  }
  if (kind == "end") {
    return "end " + object["status"].dump() + " " + object["sentence"].get<std::string>();
  }
  return "";
}

} // namespace

std::string transcriptOf(const AppRun& run) {
  const WorkFolder folder;
  std::vector<std::string> arguments{"run", "--json", "--policies", folder.write("policies.json", run.policies)};
  if (!run.events.empty()) {
    arguments.insert(arguments.end(), {"--events", folder.write("events", run.events)});
  }
  arguments.insert(arguments.end(), run.options.begin(), run.options.end());
  arguments.push_back(std::string(APPS) + "/" + run.app + ".app");
  // A sanitizer's symbolizer would inherit the preloaded library, and its complaints would be the app's output.
  const Ended ended = qvdevice(arguments, {"ASAN_OPTIONS=symbolize=0:log_path=stdout"});
  std::string transcript = ended.err;
  for (const json& object : objectsOf(ended.out)) {
    if (const std::string line = lineOf(object, run.level); !line.empty()) {
      transcript += line + "\n";
    }
  }
  return from("log 3 -[UIApplication(Sandbox) sb_setDelegate:]", transcript);
}

std::string from(const std::string& start, const std::string& transcript) {
  const std::size_t at = ("\n" + transcript).find("\n" + start);
  return at == std::string::npos ? transcript : transcript.substr(at);
}

#include "Findings.h"

#include <algorithm>

#include "Words.h"

namespace qvdevice {

namespace {

using Json = nlohmann::ordered_json;
using Tone = Finding::Tone;

std::string valueInWords(const Json& value) {
  return value.is_string() ? value.get<std::string>() : value.dump(-1, ' ', false, Json::error_handler_t::replace);
}

/// Of an activity or an app, what a person knows it by.
std::string lastPart(const std::string& identifier) { return identifier.substr(identifier.rfind('.') + 1); }

class Finder {
public:
  std::vector<Finding> find(const std::vector<Json>& records) {
    for (const Json& record : records) {
      take(record);
    }
    if (protected_ > 0) {
      add(Tone::kProtected, std::to_string(protected_) + (protected_ == 1 ? " item protected" : " items protected"));
    }
    if (findings_.empty() && !said_.empty()) {
      add(Tone::kPlain, "the app says: " + said_);
    }
    return std::move(findings_);
  }

private:
  void take(const Json& record) {
    const std::string kind = textOf(record, "kind");
    if (kind == "decision") {
      decision(record);
    } else if (kind == "refused") {
      add(Tone::kRefused, "refused: " + textOf(record, "reason"));
    } else if (kind == "out") {
      add(Tone::kAllowed, wayOutInWords(record));
    } else if (kind == "protection") {
      ++protected_;
    } else if (kind == "extension") {
      extension(record);
    } else if (kind == "sdk") {
      call(record);
    } else if (kind == "pasteboard" && textOf(record, "event") == "changed") {
      pasteboard(record);
    } else if (kind == "rotation") {
      add(Tone::kPlain, rotationInWords(record));
    } else if (kind == "output") {
      said_ = withoutLogPrefix(textOf(record, "text"));
    } else if (record.contains("offered")) {
      offer(record);
    }
  }

  void decision(const Json& record) {
    const Json answer = record.value("answer", Json());
    const std::string read = readInWords(record);
    const std::string argument = record.contains("argument") ? " " + valueInWords(record["argument"]) : "";
    const std::string words = answer.is_boolean() ? (answer.get<bool>() ? "yes" : "no") : valueInWords(answer);
    const std::string asked = textOf(record, "asked");
    note(answer == Json(false)  ? Tone::kRefused
         : answer == Json(true) ? Tone::kAllowed
                                : Tone::kPlain,
         textOf(record, "question") + argument + ": " + words + (read.empty() ? "" : " (" + read + ")"),
         asked.empty() ? "" : "asked by " + asked, true);
  }

  void offer(const Json& record) {
    std::string entries;
    for (const Json& each : record["offered"]) {
      entries += (entries.empty() ? "" : ", ") + (each.is_string() ? lastPart(each.get<std::string>()) : "?");
    }
    add(entries.empty() ? Tone::kRefused : Tone::kPlain, "offers " + (entries.empty() ? "nothing" : entries));
  }

  void pasteboard(const Json& record) {
    std::string types;
    for (const Json& type : record.value("types", Json::array())) {
      types += (types.empty() ? "" : ", ") + valueInWords(type);
    }
    add(Tone::kPlain, types.empty() ? "the pasteboard is empty now" : "on the pasteboard now: " + types);
  }

  void extension(const Json& record) {
    const std::string event = textOf(record, "event");
    if (event == "shown" || event == "completed" || event == "cancelled" || event == "interrupted" ||
        event == "failed") {
      add(event == "interrupted" || event == "failed" ? Tone::kRefused : Tone::kPlain, extensionInWords(record));
    }
  }

  void call(const Json& record) {
    const std::string call = textOf(record, "call");
    if (call == "displayMessage:") {
      add(Tone::kPlain, "the user reads: " + textOf(record, "message"));
    } else if (call == "postPasscodeExtensionResult:") {
      const Json result = record.value("result", Json());
      const bool right = result.is_object() && result.contains("ak");
      add(right ? Tone::kAllowed : Tone::kRefused, right ? "the SDK gets the keys" : "the SDK gets no keys");
    } else if (call.ends_with("Applied:message:")) {
      acknowledgement(call, record.value("result", Json()));
    }
  }

  void acknowledgement(const std::string& call, const Json& result) {
    const std::string what = call.substr(0, call.find("Applied:"));
    add(Tone::kPlain, "acknowledged: " + what + " " + resultInWords(result));
  }

  void add(Tone tone, const std::string& text) { note(tone, text, {}, false); }

  void note(Tone tone, const std::string& text, const std::string& detail, bool decision) {
    const auto same =
        std::find_if(findings_.begin(), findings_.end(), [&](const Finding& each) { return each.text == text; });
    if (same == findings_.end()) {
      findings_.push_back({tone, text, detail, decision});
    }
  }

  std::vector<Finding> findings_;
  std::string said_;
  int protected_ = 0;
};

} // namespace

std::string readInWords(const Json& decision) {
  std::string words;
  const Json read = decision.value("read", Json::object());
  for (const auto& [name, value] : read.items()) {
    // An SDK that is ready goes without saying, unless it is all that counted.
    if (name != "isReady" || value == Json(false)) {
      words += (words.empty() ? "" : ", ") + name + " " + valueInWords(value);
    }
  }
  return words;
}

std::vector<Finding> findingsOf(const std::vector<Json>& records) { return Finder().find(records); }

} // namespace qvdevice

#include "Findings.h"

#include <algorithm>
#include <map>

#include "DecisionWords.h"
#include "Words.h"

namespace qvdevice {

namespace {

using Json = nlohmann::ordered_json;
using Tone = Finding::Tone;

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

  /// Decisions that were answered alike for the same reason are one finding, whatever they were about.
  struct Decisions {
    std::size_t finding; // its index
    std::string answer;
    std::vector<std::string> about{};
    std::vector<std::string> askers{};
  };

  void decision(const Json& record) {
    const std::string question = questionOfDecision(record);
    const std::string reason = reasonOfDecisionInWords(record);
    const std::string answer =
        ": " + plainAnswerOfDecisionInWords(record) + (reason.empty() ? "" : " (" + reason + ")");
    const auto [known, isNew] = decisions_.try_emplace(question + answer, Decisions{findings_.size(), answer});
    Decisions& decisions = known->second;
    if (isNew) {
      const Json value = record.value("answer", Json());
      findings_.push_back({value == Json(false)  ? Tone::kRefused
                           : value == Json(true) ? Tone::kAllowed
                                                 : Tone::kPlain,
                           {}});
    }
    addOnce(decisions.about, argumentOfDecisionInWords(record));
    if (const std::string asked = textOf(record, "asked"); !asked.empty()) {
      addOnce(decisions.askers, asked);
    }
    Finding& finding = findings_[decisions.finding];
    finding.decisions = static_cast<int>(decisions.about.size());
    finding.text = question + inShort(decisions.about) + decisions.answer;
    const std::string about = decisions.about.size() > 1 ? "for " + joined(decisions.about) : "";
    const std::string askers = decisions.askers.empty() ? "" : "asked by " + joined(decisions.askers);
    finding.detail = about + (about.empty() || askers.empty() ? "" : "; ") + askers;
  }

  static void addOnce(std::vector<std::string>& list, const std::string& text) {
    if (std::find(list.begin(), list.end(), text) == list.end()) {
      list.push_back(text);
    }
  }

  static std::string joined(const std::vector<std::string>& list) {
    std::string text;
    for (const std::string& each : list) {
      text += (text.empty() ? "" : ", ") + each;
    }
    return text;
  }

  static std::string inShort(const std::vector<std::string>& about) {
    if (about.size() > kNamed) {
      return ", for " + std::to_string(about.size()) + " of them";
    }
    if (about.size() == 1) {
      return about.front().empty() ? "" : " " + about.front();
    }
    std::vector<std::string> names = about;
    std::transform(names.begin(), names.end(), names.begin(), lastPart);
    return " " + joined(names);
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
      types += (types.empty() ? "" : ", ") + (type.is_string() ? type.get<std::string>() : "?");
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

  void add(Tone tone, const std::string& text) {
    const auto same =
        std::find_if(findings_.begin(), findings_.end(), [&](const Finding& each) { return each.text == text; });
    if (same == findings_.end()) {
      findings_.push_back({tone, text});
    }
  }

  static constexpr std::size_t kNamed = 3;

  std::vector<Finding> findings_;
  std::map<std::string, Decisions> decisions_;
  std::string said_;
  int protected_ = 0;
};

} // namespace

std::vector<Finding> findingsOf(const std::vector<Json>& records) { return Finder().find(records); }

} // namespace qvdevice

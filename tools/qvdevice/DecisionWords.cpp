#include "DecisionWords.h"

#include "Words.h"

namespace qvdevice {

namespace {

using Json = nlohmann::ordered_json;

/// More than that are counted.
constexpr std::size_t kNamed = 3;

std::string valueInWords(const Json& value, const std::string& elements) {
  if (value.is_null()) {
    return "nil";
  }
  if (value.is_boolean()) {
    return value.get<bool>() ? "yes" : "no";
  }
  if (value.is_string()) {
    return value.get<std::string>();
  }
  if (!value.is_array()) {
    return value.dump(-1, ' ', false, Json::error_handler_t::replace);
  }
  if (value.empty() || value.size() > kNamed) {
    return value.empty() ? "none" : std::to_string(value.size()) + " " + elements;
  }
  std::string text;
  for (const Json& element : value) {
    text += (text.empty() ? "" : ", ") + valueInWords(element, elements);
  }
  return text;
}

/// The policies that it was read from; what was asked whether the SDK is there and ready goes without saying if it is.
std::string reasonInWords(const Json& read) {
  if (!read.value("isReady", false)) {
    return read.contains("isReady") ? "the SDK is not ready" : "there is no SDK";
  }
  std::string text;
  const auto add = [&](const std::string& name, const Json& value) {
    text += (text.empty() ? "" : ", ") + name + " " + valueInWords(value, "patterns");
  };
  for (const auto& [name, value] : read.items()) {
    if (name == "config" && value.is_object()) {
      for (const auto& [key, element] : value.items()) {
        add(key, element);
      }
    } else if (name != "isReady") {
      add(name, value);
    }
  }
  return text;
}

Json readBy(const Json& record) { return record.value("read", Json::object()); }

} // namespace

std::string questionOfDecision(const Json& record) {
  std::string question = textOf(record, "question");
  if (question.ends_with(':')) {
    question.pop_back();
  }
  return question;
}

std::string reasonOfDecisionInWords(const Json& record) { return reasonInWords(readBy(record)); }

std::string plainAnswerOfDecisionInWords(const Json& record) {
  return valueInWords(record.value("answer", Json()), "types");
}

std::string argumentOfDecisionInWords(const Json& record) {
  return record.contains("argument") ? valueInWords(record["argument"], "types") : "";
}

std::string answerOfDecisionInWords(const Json& record) {
  return argumentOfDecisionInWords(record) + (record.contains("argument") ? ": " : "") +
         plainAnswerOfDecisionInWords(record);
}

std::string decisionInWords(const Json& record) {
  const std::string asked = textOf(record, "asked");
  const std::string reason = reasonOfDecisionInWords(record);
  return (asked.empty() ? "" : asked + " asks ") + questionOfDecision(record) +
         (record.contains("argument") ? " " : ": ") + answerOfDecisionInWords(record) +
         (reason.empty() ? "" : " (" + reason + ")");
}

bool areAlike(const Json& decision, const Json& other) {
  return textOf(decision, "asked") == textOf(other, "asked") &&
         textOf(decision, "question") == textOf(other, "question") && readBy(decision) == readBy(other);
}

} // namespace qvdevice

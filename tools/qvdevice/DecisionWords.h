#pragma once

#include <string>

#include <nlohmann/json.hpp>

namespace qvdevice {

/// A decision of the library's with the policies behind it, for people:
/// "+[UIPrintInteractionController isPrintingAvailable] asks allowsPrinting: no (printPolicy 0)".
std::string decisionInWords(const nlohmann::ordered_json& record);

/// What the decision was about and its answer alone: "com.example.mail: no". For one like the one before.
std::string answerOfDecisionInWords(const nlohmann::ordered_json& record);

/// What was asked, as the code calls it: "allowsPrinting".
std::string questionOfDecision(const nlohmann::ordered_json& record);

/// The policies that the answer was read from: "openInPolicy 2, openInWhitelist com.example.*", or that there was
/// nobody to ask.
std::string reasonOfDecisionInWords(const nlohmann::ordered_json& record);

/// What it was about: "com.example.mail"; nothing when the question needs no more.
std::string argumentOfDecisionInWords(const nlohmann::ordered_json& record);

/// The answer, without what it was about: "no", "3 types".
std::string plainAnswerOfDecisionInWords(const nlohmann::ordered_json& record);

/// Whether both are the same question for the same reason, under the same policies: only what it is about differs.
bool areAlike(const nlohmann::ordered_json& decision, const nlohmann::ordered_json& other);

} // namespace qvdevice

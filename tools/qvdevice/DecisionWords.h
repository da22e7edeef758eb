#pragma once

#include <string>

#include <nlohmann/json.hpp>

namespace qvdevice {

/// A decision of the library's with the policies behind it, for people:
/// "+[UIPrintInteractionController isPrintingAvailable] asks allowsPrinting: no (printPolicy 0)".
std::string decisionInWords(const nlohmann::ordered_json& record);

/// What the decision was about and its answer alone: "com.example.mail: no". For one like the one before.
std::string answerOfDecisionInWords(const nlohmann::ordered_json& record);

/// Whether both are the same question for the same reason, under the same policies: only what it is about differs.
bool areAlike(const nlohmann::ordered_json& decision, const nlohmann::ordered_json& other);

} // namespace qvdevice

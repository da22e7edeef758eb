// Words that tell a person what happens.
#pragma once

#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include "Events.h"

namespace qvdevice {

/// The text under a key; empty when there is none.
std::string textOf(const nlohmann::ordered_json& object, const char* key);

/// A line of the app's without what NSLog puts before it: when, and which process; here there is one, and now.
std::string withoutLogPrefix(const std::string& line);
/// A protection class.
std::string inWords(const std::string& protection);
/// A step of the app's life, as the device's trace names it.
std::string lifecycleInWords(const std::string& event);
/// A call at the SDK with its arguments: "name: (delegate nil, version 4.2.0.18)".
std::string callInWords(const nlohmann::ordered_json& record);
/// What the SDK was told of a change: applied, not applied, an error.
std::string resultInWords(const nlohmann::ordered_json& result);
/// Something that has left the app.
std::string wayOutInWords(const nlohmann::ordered_json& record);
/// What a menu or the share sheet offers; empty when the record is of something else.
std::string offerInWords(const nlohmann::ordered_json& record);
/// What becomes of an app extension that the app asked for.
std::string extensionInWords(const nlohmann::ordered_json& record);
/// The windows as a table, its heading first, a line each.
std::vector<std::string> windowsInWords(const nlohmann::ordered_json& record);
/// A question of the SDK's and what its delegate answered.
std::string answerInWords(const nlohmann::ordered_json& record);
/// Whether the screen turns with the device.
std::string rotationInWords(const nlohmann::ordered_json& record);
/// A picture of the screen that was taken.
std::string pictureInWords(const nlohmann::ordered_json& record);
/// What is done to the app.
std::string eventInWords(const Event& event);

} // namespace qvdevice

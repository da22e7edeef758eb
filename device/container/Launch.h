#pragma once

#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>

namespace qvdevice {

/// What the app is launched for: nothing (the user touched its icon), or a URL that another app handed to the system.
struct Launch {
  std::optional<std::string> url;
  /// The other app's bundle identifier.
  std::optional<std::string> sourceApplication;
  /// Whatever the other app sent along; null when it sent nothing.
  nlohmann::json annotation;
};

/// Reads the text of a JSON object. Every key is optional, but there is no sender and no annotation without a URL.
/// Anything else is refused, with the reason in `error`.
bool parseLaunch(std::string_view text, Launch& launch, std::string& error);

/// How this app is launched (QVDEVICE_LAUNCH). The first call reads it and refuses to go on when it is malformed.
const Launch& launch();

} // namespace qvdevice

#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include <nlohmann/json.hpp>

namespace zorbel {

/// The state and policies that the SDK answers with, as a policies file gives them. What the file leaves out is as for
/// an app that nobody has enrolled yet.
struct Policies {
  bool ready = false;
  bool readyToTerminate = false;
  bool checkInRequested = false;
  std::int64_t authState = 0;
  std::int64_t managedPolicy = 0;
  std::int64_t openInPolicy = 0;
  std::int64_t pasteboardPolicy = 0;
  std::int64_t printPolicy = 0;
  std::optional<std::vector<std::string>> openInWhitelist;
  nlohmann::json config;  // an object, or null
  nlohmann::json appInfo; // an object, or null; {"base64": "..."} in it stands for data
  std::vector<std::string> zbPasteboardTypePrefixes;
  std::vector<std::string> appSchemes;
  /// Whether the SDK, once it is started, stands between the application and its delegate.
  bool delegateProxy = false;
};

/// Why policies are not taken, and where in their text; lines and columns count from one.
struct Refusal {
  std::size_t line;
  std::size_t column;
  std::string reason;
};

using Taken = std::variant<Policies, Refusal>;

/// Reads the text of a policies file; what it leaves out is as in `base`.
Taken parsePolicies(const std::string& text, Policies base = {});
/// The same for an object that has been read already. There is no text to point into: a refusal's place is 0:0.
Taken takeValues(const nlohmann::json& values, Policies base);

/// The policies of this process: those of the file that QVDEVICE_POLICIES names, until they are changed. A file that is
/// refused ends the process with status 65 and file, line, column and reason on standard error. Any thread; what was
/// read stays valid and unchanged.
const Policies& policies();

/// Policies that took the place of others. Both stay valid; they are the same ones after a refusal.
struct Change {
  const Policies* before;
  const Policies* now;
  std::optional<Refusal> refusal;
};

/// They as a policies file gives them, with every key that has a value.
nlohmann::json valuesOf(const Policies& policies);

/// Changes them from now on, to what `change` makes of those of the moment, if it does not refuse. Any thread.
Change changePolicies(const std::function<Taken(const Policies&)>& change);

/// Decodes base64 (RFC 4648, with padding); nothing when it is not that.
std::optional<std::string> decodeBase64(const std::string& text);

} // namespace zorbel

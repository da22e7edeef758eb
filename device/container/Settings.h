#pragma once

#include <string>
#include <string_view>

namespace qvdevice {

/// What can differ from one device to another.
struct Settings {
  std::string systemVersion = "17.0";
  std::string idiom = "phone";
  /// The protection class of an item that was given none; "absent" for a device that answers no class at all.
  std::string defaultProtection = "NSFileProtectionNone";
  /// Whether the application answers to its private terminateWithSuccess.
  bool terminateWithSuccess = true;
  /// Whether the user defaults answer to a message of that name.
  bool persistentDomainNames = true;
  /// Whether there is a printing service.
  bool printingAvailable = true;
};

/// Whether the system is of this release or a later one: `isSystemVersionAtLeast("8.3")`.
bool isSystemVersionAtLeast(std::string_view version);

/// Reads settings from the text of a JSON object. Every key is optional; an unknown key or a value that no device has
/// is refused, with the reason in `error`.
bool parseSettings(std::string_view text, Settings& settings, std::string& error);

/// This device's settings. The first call reads them and refuses to go on with malformed ones.
const Settings& settings();

} // namespace qvdevice

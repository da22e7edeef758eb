#pragma once

#include <string>
#include <vector>

/// A run of an app told in short lines, from the moment when its delegate is set:
///
///   event NAME ARGUMENT=VALUE...   what was done to it
///   device EVENT                   a step of its life, before its delegate hears of it
///   log LEVEL TEXT                 what the library logged
///   sdk CALL ARGUMENT=VALUE...     what the SDK was asked for
///   app TEXT                       what the app said
///   end STATUS SENTENCE
///
/// Addresses of objects are left out, and so is everything about the capture of standard error. So is the event "ends",
/// which nothing is done for: an app ends while it is waited for, or before.
struct AppRun {
  std::string app;
  std::string policies = R"({"ready": true, "authState": 1, "managedPolicy": 2})";
  std::string events{};
  std::vector<std::string> options{};
  /// With the lines that are logged above this level left out.
  int level = 3;
};

std::string transcriptOf(const AppRun& run);

/// The part of a transcript that begins with the first line that starts so; the whole when there is none.
std::string from(const std::string& start, const std::string& transcript);

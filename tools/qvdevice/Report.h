#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include "Bundle.h"
#include "Events.h"
#include "Items.h"

namespace qvdevice {

/// What is run, and how.
struct Setting {
  Bundle bundle;
  std::string systemVersion;
  std::string idiom;
  std::string defaultProtection;
  std::filesystem::path container;
  bool keptContainer = false;
  bool withLibrary = true;
};

/// How it ended.
struct Outcome {
  int status = 0;       // that qvdevice exits with
  std::string sentence; // one sentence, without the full stop
};

/// Tells a person or a program what happens, as it happens.
class Report {
public:
  virtual ~Report() = default;

  /// Whether a picture of the screen is wanted after each event that has changed it.
  virtual bool wantsPictures() const { return false; }

  /// What follows belongs together. May come before an app's begin and after its end.
  virtual void chapter(const std::string& title) = 0;
  virtual void begin(const Setting& setting) = 0;
  /// A line that the app wrote to its standard output or standard error.
  virtual void line(const std::string& text) = 0;
  /// A record of the device's trace.
  virtual void record(const nlohmann::ordered_json& record) = 0;
  /// Something is done to the app now.
  virtual void event(const Event& event) = 0;
  virtual void end(const std::vector<Item>& items, const Outcome& outcome) = 0;
  /// A scenario with several launches is over, or could not go on.
  virtual void played(const Outcome& outcome) = 0;
  /// Another report was written, to this page.
  virtual void wrote(const std::filesystem::path& page) = 0;
};

/// Tells several others what it is told; they outlive it.
std::unique_ptr<Report> makeSharedReport(std::vector<Report*> others);
/// For people. `verbose` shows details too: of the log, each step, each event of the user that the SDK hears of.
std::unique_ptr<Report> makeTextReport(bool verbose, bool colour);
/// For people who look on: a line for each thing that happens, with what came of it.
std::unique_ptr<Report> makeProgressReport(bool colour);
/// For programs: one JSON object a line.
std::unique_ptr<Report> makeJsonReport();
/// The same objects, for whoever takes them.
std::unique_ptr<Report> makeJsonReport(std::function<void(const nlohmann::ordered_json&)> taker);

} // namespace qvdevice

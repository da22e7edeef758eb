#pragma once

#include <string>
#include <vector>

#include "Report.h"

namespace qvdevice {

/// Something that happened, and all that came of it until the next thing did.
struct Step {
  enum class Kind { kInstall, kLaunch, kEvent };
  Kind kind = Kind::kEvent;
  std::string title;
  std::size_t line = 0; // of the events or the scenario; 0 for what stands in no file
  /// Records of the device's trace, and the app's own lines as records of the kind "output".
  std::vector<nlohmann::ordered_json> records;
};

/// A report that tells of whole steps, when they are over.
class StepReport : public Report {
public:
  void begin(const Setting& setting) final;
  void line(const std::string& text) final;
  void record(const nlohmann::ordered_json& record) final;
  void event(const Event& event) final;
  void chapter(const std::string& title) final;
  void end(const std::vector<Item>& items, const Outcome& outcome) final;
  void played(const Outcome& outcome) final;

protected:
  virtual void beganChapter(const std::string& title) = 0;
  /// Before the step that is the launch.
  virtual void launched(const Setting& setting) = 0;
  virtual void took(const Step& step) = 0;
  virtual void ended(const std::vector<Item>& items, const Outcome& outcome) = 0;
  virtual void isOver(const Outcome& outcome) = 0;

private:
  void start(Step step);
  void finish();

  Step step_;
  bool open_ = false;
};

} // namespace qvdevice

#include "StepReport.h"

#include <utility>

#include "Words.h"

namespace qvdevice {

void StepReport::begin(const Setting& setting) {
  finish();
  launched(setting);
  start({Step::Kind::kLaunch, setting.bundle.name() + " is launched", 0, {}});
}

void StepReport::line(const std::string& text) { record({{"kind", "output"}, {"text", text}}); }

void StepReport::record(const nlohmann::ordered_json& record) {
  if (textOf(record, "kind") == "installed") {
    start({Step::Kind::kInstall, textOf(record, "app") + " is put on the device", 0, {record}});
    finish();
  } else if (open_) {
    step_.records.push_back(record);
  }
}

void StepReport::event(const Event& event) { start({Step::Kind::kEvent, eventInWords(event), event.line, {}}); }

void StepReport::chapter(const std::string& title) {
  finish();
  beganChapter(title);
}

void StepReport::end(const std::vector<Item>& items, const Outcome& outcome) {
  finish();
  ended(items, outcome);
}

void StepReport::played(const Outcome& outcome) {
  finish();
  isOver(outcome);
}

void StepReport::start(Step step) {
  finish();
  step_ = std::move(step);
  open_ = true;
}

void StepReport::finish() {
  if (std::exchange(open_, false)) {
    took(step_);
  }
}

} // namespace qvdevice

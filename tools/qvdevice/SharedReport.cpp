#include "Report.h"

#include <algorithm>

namespace qvdevice {

namespace {

class SharedReport : public Report {
public:
  explicit SharedReport(std::vector<Report*> others) : others_(std::move(others)) {}

  bool wantsPictures() const override {
    return std::any_of(others_.begin(), others_.end(), [](const Report* each) { return each->wantsPictures(); });
  }

  void chapter(const std::string& title) override {
    for (Report* each : others_) {
      each->chapter(title);
    }
  }

  void begin(const Setting& setting) override {
    for (Report* each : others_) {
      each->begin(setting);
    }
  }

  void line(const std::string& text) override {
    for (Report* each : others_) {
      each->line(text);
    }
  }

  void record(const nlohmann::ordered_json& record) override {
    for (Report* each : others_) {
      each->record(record);
    }
  }

  void event(const Event& event) override {
    for (Report* each : others_) {
      each->event(event);
    }
  }

  void end(const std::vector<Item>& items, const Outcome& outcome) override {
    for (Report* each : others_) {
      each->end(items, outcome);
    }
  }

  void played(const Outcome& outcome) override {
    for (Report* each : others_) {
      each->played(outcome);
    }
  }

  void wrote(const std::filesystem::path& page) override {
    for (Report* each : others_) {
      each->wrote(page);
    }
  }

private:
  std::vector<Report*> others_;
};

} // namespace

std::unique_ptr<Report> makeSharedReport(std::vector<Report*> others) {
  return std::make_unique<SharedReport>(std::move(others));
}

} // namespace qvdevice

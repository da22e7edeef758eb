#pragma once

#include <chrono>
#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "ContainerTree.h"
#include "CoverageTable.h"
#include "Findings.h"
#include "Markup.h"
#include "ReportFolder.h"
#include "StepReport.h"

namespace qvdevice {

/// A report to keep, to print and to show to others: one HTML file that needs no other, and no script. It is written
/// when all is over, by `write`.
class HtmlReport : public StepReport {
public:
  /// Throws Failure for a folder that the report cannot be written to.
  explicit HtmlReport(const std::filesystem::path& folder);

  /// What it is a report of, when that is not the app that was run.
  void setTitle(const std::string& title) { title_ = title; }
  /// Throws Failure when it cannot be written. `outcome` is how all of it ended.
  void write(const Outcome& outcome);
  std::filesystem::path page() const { return folder_.page(); }
  void wrote(const std::filesystem::path&) override {}

  bool wantsPictures() const override { return true; }

protected:
  void beganChapter(const std::string& title) override;
  void launched(const Setting& setting) override;
  void took(const Step& step) override;
  void ended(const std::vector<Item>& items, const Outcome& outcome) override;
  void isOver(const Outcome& outcome) override;

private:
  struct Chapter {
    std::string title;
    Markup steps;
  };

  Markup& steps();
  Markup head(const Outcome& outcome) const;
  Markup contents() const;
  Markup timeline() const;
  Markup acknowledgements() const;
  void noteCalls(const Step& step);

  ReportFolder folder_;
  std::chrono::system_clock::time_point start_ = std::chrono::system_clock::now();
  std::string title_;
  std::optional<Setting> setting_;
  std::vector<std::string> apps_; // each once, with version and identifier
  std::string libraryVersion_;
  std::vector<Chapter> chapters_;
  ContainerTree before_;
  Markup containers_;
  Markup acknowledgements_;
  CoverageTable coverage_;
  std::size_t number_ = 0;
  std::map<Finding::Tone, int> decisions_;
  int protected_ = 0;
  int wiped_ = 0;
};

/// Plays something that `shown` tells of, and `html` as well unless it is null. That is written however it ends, also
/// when `play` throws, and then `shown` says where it lies.
Outcome playReported(Report& shown, HtmlReport* html, const std::function<Outcome(Report&)>& play);

} // namespace qvdevice

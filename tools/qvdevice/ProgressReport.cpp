#include "Report.h"

#include <cstdio>

#include "Findings.h"
#include "StepReport.h"
#include "Terminal.h"

namespace qvdevice {

namespace {

class ProgressReport : public StepReport {
public:
  explicit ProgressReport(bool colour) : terminal_(colour) {}

  void wrote(const std::filesystem::path& page) override {
    terminal_.print({{Colour::kNone, "The report is "}, {Colour::kBold, page.string()}});
  }

protected:
  void beganChapter(const std::string& title) override { terminal_.print(Colour::kBold, "\n" + title); }

  void launched(const Setting& setting) override {
    if (!told_) {
      told_ = true;
      terminal_.print(Colour::kDim, std::string("On a simulated ") + (setting.idiom == "pad" ? "tablet" : "phone") +
                                        ", system " + setting.systemVersion +
                                        (setting.withLibrary ? "" : ", without the sandbox"));
    }
  }

  void took(const Step& step) override {
    const std::vector<Finding> findings = findingsOf(step.records);
    std::string line = "  " + step.title;
    if (findings.empty()) {
      terminal_.print(Colour::kNone, line);
      return;
    }
    if (shownWidth(line) > kColumn) {
      terminal_.print(Colour::kNone, line);
      line.clear();
    }
    for (const Finding& finding : findings) {
      terminal_.print({{Colour::kNone, padded(line, kColumn)}, {colourOf(finding.tone), "  " + clipped(finding.text)}});
      line.clear();
    }
  }

  void ended(const std::vector<Item>&, const Outcome& outcome) override {
    terminal_.print(outcome.status == 0 ? Colour::kDim : Colour::kRed, "  " + outcome.sentence);
  }

  void isOver(const Outcome& outcome) override {
    terminal_.print(outcome.status == 0 ? Colour::kGreen : Colour::kRed, "\n" + outcome.sentence + ".");
  }

private:
  static constexpr std::size_t kColumn = 46;
  static constexpr std::size_t kLongest = 90;

  static Colour colourOf(Finding::Tone tone) {
    switch (tone) {
    case Finding::Tone::kAllowed:
    case Finding::Tone::kProtected:
      return Colour::kGreen;
    case Finding::Tone::kRefused:
      return Colour::kRed;
    case Finding::Tone::kPlain:
      break;
    }
    return Colour::kNone;
  }

  /// What is longer stands in the report.
  static std::string clipped(const std::string& text) {
    if (shownWidth(text) <= kLongest) {
      return text;
    }
    std::size_t end = 0;
    for (std::size_t shown = 0; shown < kLongest - 3; ++end) {
      shown += isContinuation(text[end + 1]) ? 0 : 1;
    }
    return text.substr(0, end) + "...";
  }

  Terminal terminal_;
  bool told_ = false;
};

} // namespace

std::unique_ptr<Report> makeProgressReport(bool colour) { return std::make_unique<ProgressReport>(colour); }

} // namespace qvdevice

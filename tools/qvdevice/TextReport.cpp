#include "Coverage.h"
#include "DecisionWords.h"
#include "Report.h"

#include "Terminal.h"
#include "Words.h"

#include <algorithm>
#include <map>
#include <set>

namespace qvdevice {

namespace {

using Json = nlohmann::ordered_json;

/// A path that fits: what it begins and ends with tells the most.
std::string shortened(const std::string& path, std::size_t width) {
  if (path.size() <= width) {
    return path;
  }
  const std::size_t slash = path.find('/');
  const std::size_t start = slash == std::string::npos ? 0 : slash + 1;
  const std::size_t rest = path.rfind('/');
  return rest <= start ? path : path.substr(0, start) + "..." + path.substr(rest);
}

class TextReport : public Report {
public:
  TextReport(bool verbose, bool colour) : verbose_(verbose), terminal_(colour) {}

  void chapter(const std::string& title) override { section(title); }

  void begin(const Setting& setting) override {
    defaultProtection_ = setting.defaultProtection;
    const Bundle& bundle = setting.bundle;
    std::string title = bundle.name() + (bundle.version.empty() ? "" : " " + bundle.version);
    if (!bundle.identifier.empty()) {
      title += " (" + bundle.identifier + ")";
    }
    title += setting.idiom == "pad" ? " on a simulated tablet" : " on a simulated phone";
    print(Colour::kBold, title + ", system " + setting.systemVersion);
    print(Colour::kNone, setting.withLibrary
                             ? "The app knows nothing of the sandbox: libQVSandbox.so is put into its process at load."
                             : "The app runs by itself, without the sandbox.");
    print(Colour::kNone, "Files that get no protection class of their own have the device's default: " +
                             inWords(setting.defaultProtection) + ".");
    if (setting.keptContainer) {
      print(Colour::kNone, "Its container is " + setting.container.string());
    }
    section("Start-up, before the app's own code: what is logged, and at which level");
  }

  void line(const std::string& text) override { entry("app", withoutLogPrefix(text)); }

  void record(const Json& record) override {
    const std::string kind = textOf(record, "kind");
    if (kind == "log") {
      log(record);
    } else if (kind == "lifecycle") {
      if (!launched_) {
        launched_ = true;
        section("The app runs");
      }
      entry("lifecycle", lifecycleInWords(textOf(record, "event")), Colour::kCyan);
    } else if (kind == "protection") {
      protection(record);
    } else if (kind == "output") {
      line(textOf(record, "text"));
    } else if (kind == "out") {
      entry("out", wayOutInWords(record), Colour::kBold);
    } else if (const std::string offer = offerInWords(record); !offer.empty()) {
      entry("screen", offer, Colour::kCyan);
    } else if (kind == "extension") {
      entry("extension", extensionInWords(record), Colour::kCyan);
    } else if (kind == "sdk") {
      call(record);
    } else if (kind == "refused") {
      entry("refused", textOf(record, "reason"));
    } else if (kind == "ask") {
      entry("sdk", "asks " + answerInWords(record));
    } else if (kind == "rotation") {
      entry("screen", rotationInWords(record), Colour::kCyan);
    } else if (kind == "screen") {
      entry("screen", pictureInWords(record), Colour::kCyan);
    } else if (kind == "windows") {
      for (const std::string& row : windowsInWords(record)) {
        entry("windows", row);
      }
    } else if (kind == "decision") {
      decision(record);
    } else if (kind == "coverage") {
      coverage(record);
    } else if (verbose_ && kind != "hook") {
      entry(kind, record.dump(-1, ' ', false, Json::error_handler_t::replace), Colour::kDim);
    }
  }

  void event(const Event& event) override {
    // A step of the app's life tells of itself.
    static const std::set<std::string> kSteps{"activate",  "resign", "background", "foreground",
                                              "terminate", "wait",   "ends",       "screen"};
    const bool step = kSteps.contains(event.name);
    if (verbose_ || !step) {
      entry("event", eventInWords(event), step ? Colour::kDim : Colour::kCyan);
    }
  }

  void end(const std::vector<Item>& items, const Outcome& outcome) override {
    section("What the app left in its container, and the protection class that it ended with");
    std::size_t width = 0;
    for (const Item& item : items) {
      width = std::max(width, item.path.size());
    }
    std::map<std::string, int> counts;
    for (const Item& item : items) {
      const std::string words =
          item.protection.empty() ? inWords(defaultProtection_) + " (the device's default)" : inWords(item.protection);
      ++counts[words];
      const bool open = item.protection.empty() || item.protection == "NSFileProtectionNone";
      print(open ? Colour::kDim : Colour::kNone, "  " + padded(item.path, width) + "   " + words);
    }
    print(Colour::kNone, "");
    print(Colour::kNone, std::to_string(items.size()) + (items.size() == 1 ? " item" : " items"));
    for (const auto& [words, count] : counts) {
      print(Colour::kNone, padded("  " + std::to_string(count), 6) + words);
    }
    print(outcome.status == 0 ? Colour::kGreen : Colour::kRed, "\n" + outcome.sentence + ".");
  }

  void wrote(const std::filesystem::path& page) override { print(Colour::kNone, "The report is " + page.string()); }

  void played(const Outcome& outcome) override {
    print(outcome.status == 0 ? Colour::kGreen : Colour::kRed, "\n" + outcome.sentence + ".");
  }

private:
  static constexpr std::size_t kTagWidth = 12;
  static constexpr std::size_t kPathWidth = 36;
  static constexpr int kDetailLevel = 4;

  void log(const Json& record) {
    const int level = record.value("level", 0);
    if (level >= kDetailLevel && !verbose_) {
      return;
    }
    entry("log " + std::to_string(level), textOf(record, "text"), level == 0 ? Colour::kRed : Colour::kNone);
  }

  void call(const Json& record) {
    const std::string name = textOf(record, "call");
    if (name == "displayMessage:") {
      const Json message = record.value("message", Json());
      entry("message", message.is_string() ? message.get<std::string>() : "(without a text)", Colour::kBold);
    } else if (name == "sendEvent:") {
      if (verbose_) {
        entry("sdk", callInWords(record), Colour::kDim);
      }
    } else {
      entry("sdk", callInWords(record));
    }
  }

  /// A share sheet asks of each activity that it has; only the first time all is told.
  void decision(const Json& record) {
    const bool again = areAlike(record, decided_);
    entry("decision", again ? "... " + answerOfDecisionInWords(record) : decisionInWords(record), Colour::kBold);
    decided_ = record;
  }

  void coverage(const Json& record) {
    if (!verbose_) {
      return;
    }
    section("How often each hook was called");
    for (const std::string& row : coverageInWords(record)) {
      print(Colour::kNone, "  " + row);
    }
  }

  void protection(const Json& record) {
    const std::string from = textOf(record, "from");
    entry("protection",
          padded(shortened(textOf(record, "path"), kPathWidth), kPathWidth) + "  " +
              (from.empty() ? "no class" : inWords(from)) + " -> " + inWords(textOf(record, "to")),
          Colour::kGreen);
  }

  void section(const std::string& title) { print(Colour::kBold, "\n" + title); }

  void entry(const std::string& tag, const std::string& text, Colour colour = Colour::kNone) {
    decided_ = Json::object();
    print(colour, "  " + padded(tag, kTagWidth) + text);
  }

  void print(Colour colour, const std::string& text) { terminal_.print(colour, text); }

  bool verbose_;
  Terminal terminal_;
  bool launched_ = false;
  std::string defaultProtection_;
  /// The decision that stands in the line above; otherwise empty.
  Json decided_ = Json::object();
};

} // namespace

std::unique_ptr<Report> makeTextReport(bool verbose, bool colour) {
  return std::make_unique<TextReport>(verbose, colour);
}

} // namespace qvdevice

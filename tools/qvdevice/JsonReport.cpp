#include "Report.h"

#include <cstdio>

namespace qvdevice {

namespace {

using Json = nlohmann::ordered_json;

void print(const Json& object) {
  const std::string line = object.dump(-1, ' ', false, Json::error_handler_t::replace) + "\n";
  std::fwrite(line.data(), 1, line.size(), stdout);
  std::fflush(stdout);
}

Json orNull(const std::string& text) { return text.empty() ? Json(nullptr) : Json(text); }

class JsonReport : public Report {
public:
  explicit JsonReport(std::function<void(const Json&)> take) : take_(std::move(take)) {}

  void chapter(const std::string& title) override { take_({{"kind", "chapter"}, {"title", title}}); }

  void begin(const Setting& setting) override {
    take_({{"kind", "begin"},
           {"app", setting.bundle.name()},
           {"identifier", setting.bundle.identifier},
           {"systemVersion", setting.systemVersion},
           {"idiom", setting.idiom},
           {"defaultProtection", setting.defaultProtection},
           {"container", setting.container.string()},
           {"library", setting.withLibrary}});
  }

  void line(const std::string& text) override { take_({{"kind", "output"}, {"text", text}}); }

  void record(const Json& record) override { take_(record); }

  void event(const Event& event) override {
    Json object{{"kind", "event"}, {"event", event.name}};
    if (event.line != 0) {
      object["line"] = event.line;
    }
    if (event.kind == Event::Kind::kWait) {
      object["milliseconds"] = event.wait.count();
    }
    if (event.kind == Event::Kind::kAwait) {
      object["call"] = event.call;
    }
    if (event.kind == Event::Kind::kScreen) {
      object["title"] = orNull(event.title);
    }
    if (event.refused) {
      object["refused"] = true;
    }
    for (const auto& [key, value] : event.command.items()) {
      if (key != "do") {
        object[key] = value;
      }
    }
    take_(object);
  }

  void end(const std::vector<Item>& items, const Outcome& outcome) override {
    for (const Item& item : items) {
      take_({{"kind", "item"}, {"path", item.path}, {"protection", orNull(item.protection)}});
    }
    take_({{"kind", "end"}, {"status", outcome.status}, {"sentence", outcome.sentence}});
  }

  void wrote(const std::filesystem::path& page) override { take_({{"kind", "report"}, {"page", page.string()}}); }

  void played(const Outcome& outcome) override {
    take_({{"kind", "played"}, {"status", outcome.status}, {"sentence", outcome.sentence}});
  }

private:
  std::function<void(const Json&)> take_;
};

} // namespace

std::unique_ptr<Report> makeJsonReport() { return makeJsonReport(print); }

std::unique_ptr<Report> makeJsonReport(std::function<void(const Json&)> taker) {
  return std::make_unique<JsonReport>(std::move(taker));
}

} // namespace qvdevice

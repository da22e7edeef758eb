#include "HtmlReport.h"

#include <algorithm>
#include <array>
#include <ctime>

#include "Failure.h"
#include "Findings.h"
#include "StepMarkup.h"
#include "Templates.h"
#include "Words.h"

namespace qvdevice {

namespace {

using Json = nlohmann::ordered_json;

Markup fact(const char* name, const std::string& value) {
  return Markup::element(
      "div", {}, Markup::element("dt", {}, Markup::text(name)) + Markup::element("dd", {}, Markup::text(value)));
}

Markup section(const char* id, const std::string& title, const std::string& lead, const Markup& content) {
  return Markup::element("section", {{"id", id}, {"aria-labelledby", std::string(id) + "-title"}},
                         Markup::element("h2", {{"id", std::string(id) + "-title"}}, Markup::text(title)) +
                             (lead.empty() ? Markup() : Markup::element("p", {{"class", "lead"}}, Markup::text(lead))) +
                             content);
}

std::string chapterId(std::size_t index) { return "chapter-" + std::to_string(index + 1); }

std::string inWords(std::chrono::system_clock::time_point time) {
  const std::time_t seconds = std::chrono::system_clock::to_time_t(time);
  std::tm parts{};
  gmtime_r(&seconds, &parts);
  std::array<char, 32> text{};
  std::strftime(text.data(), text.size(), "%Y-%m-%d %H:%M UTC", &parts);
  return text.data();
}

Markup link(const std::string& target, const std::string& text) {
  return Markup::element("a", {{"href", "#" + target}}, Markup::text(text));
}

} // namespace

HtmlReport::HtmlReport(const std::filesystem::path& folder) : folder_(folder) {}

void HtmlReport::beganChapter(const std::string& title) { chapters_.push_back({title, {}}); }

Markup& HtmlReport::steps() {
  if (chapters_.empty()) {
    chapters_.push_back({"What happens", {}});
  }
  return chapters_.back().steps;
}

void HtmlReport::launched(const Setting& setting) {
  setting_ = setting;
  const Bundle& bundle = setting.bundle;
  const std::string app = bundle.name() + (bundle.version.empty() ? "" : " " + bundle.version) +
                          (bundle.identifier.empty() ? "" : " (" + bundle.identifier + ")");
  if (std::find(apps_.begin(), apps_.end(), app) == apps_.end()) {
    apps_.push_back(app);
  }
  before_ = ContainerTree(setting.container);
}

void HtmlReport::took(const Step& step) {
  steps() += stepMarkup(step, ++number_);
  for (const Finding& finding : findingsOf(step.records)) {
    decisions_[finding.tone] += finding.decisions;
  }
  for (const Json& record : step.records) {
    const std::string kind = textOf(record, "kind");
    protected_ += kind == "protection" ? 1 : 0;
    if (kind == "coverage") {
      coverage_.add(record);
    } else if (kind == "sdk" && libraryVersion_.empty()) {
      libraryVersion_ = textOf(record, "version");
    }
  }
  noteCalls(step);
}

void HtmlReport::noteCalls(const Step& step) {
  for (const Json& record : step.records) {
    const std::string call = textOf(record, "call");
    const bool acknowledges = call.ends_with("Applied:message:");
    if (textOf(record, "kind") != "sdk" ||
        (!acknowledges && call != "displayMessage:" && call != "postPasscodeExtensionResult:")) {
      continue;
    }
    const Json result = record.value("result", Json());
    acknowledgements_ +=
        Markup::element("tr", {},
                        Markup::element("td", {}, link("step-" + std::to_string(number_), std::to_string(number_))) +
                            Markup::element("td", {}, Markup::text(setting_ ? setting_->bundle.name() : "")) +
                            Markup::element("th", {{"scope", "row"}}, Markup::element("code", {}, Markup::text(call))) +
                            Markup::element("td", {}, Markup::text(result.is_null() ? "" : resultInWords(result))) +
                            Markup::element("td", {}, Markup::text(textOf(record, "message"))));
  }
}

void HtmlReport::ended(const std::vector<Item>&, const Outcome& outcome) {
  steps() += Markup::element("p", {{"class", outcome.status == 0 ? "outcome good" : "outcome bad"}},
                             Markup::text(outcome.sentence + "."));
  const ContainerChange change(before_, ContainerTree(setting_->container), setting_->defaultProtection);
  wiped_ += change.gone();
  const std::string name = setting_->bundle.name();
  containers_ += Markup::element(
      "details", {{"class", "container"}},
      Markup::element("summary", {},
                      Markup::element("strong", {}, Markup::text(name)) +
                          Markup::text(" until step " + std::to_string(number_) + ": " + change.summary())) +
          change.table("The container of " + name + ", before its launch and after its end"));
}

void HtmlReport::isOver(const Outcome&) {}

Markup HtmlReport::head(const Outcome& outcome) const {
  const auto seconds =
      std::chrono::duration_cast<std::chrono::seconds>(std::chrono::system_clock::now() - start_).count();
  std::string apps;
  for (const std::string& app : apps_) {
    apps += (apps.empty() ? "" : ", ") + app;
  }
  Markup facts;
  facts += fact(apps_.size() == 1 ? "App" : "Apps", apps.empty() ? "none was launched" : apps);
  if (setting_) {
    facts += fact("Library", !setting_->withLibrary    ? "none: the apps run by themselves"
                             : libraryVersion_.empty() ? "QVSandbox"
                                                       : "QVSandbox " + libraryVersion_);
    facts += fact("Device", std::string("simulated ") + (setting_->idiom == "pad" ? "tablet" : "phone") + ", system " +
                                setting_->systemVersion);
    facts += fact("Files without a class of their own", qvdevice::inWords(setting_->defaultProtection));
  }
  facts += fact("Played", inWords(start_) + ", in " + std::to_string(seconds) + " s");
  Markup counts;
  const auto count = [&counts](int number, const char* what, const char* style) {
    if (number > 0) {
      counts += Markup::element("li", {{"class", style}},
                                Markup::element("b", {}, Markup::text(std::to_string(number))) +
                                    Markup::text(std::string(" ") + what));
    }
  };
  count(static_cast<int>(number_), "steps", "plain");
  const auto decided = [this](Finding::Tone tone) {
    const auto found = decisions_.find(tone);
    return found == decisions_.end() ? 0 : found->second;
  };
  count(decided(Finding::Tone::kAllowed), "decisions: allowed", "allowed");
  count(decided(Finding::Tone::kRefused), "decisions: refused", "refused");
  count(protected_, "items protected", "protected");
  count(wiped_, "items gone", "refused");
  const bool good = outcome.status == 0;
  return Markup::element("p", {{"class", good ? "outcome good" : "outcome bad"}, {"role", "status"}},
                         Markup::element("span", {{"aria-hidden", "true"}}, Markup::text(good ? "✓" : "✕")) +
                             Markup::text(" " + outcome.sentence + ".")) +
         Markup::element("ul", {{"class", "counts"}}, counts) + Markup::element("dl", {{"class", "facts"}}, facts);
}

Markup HtmlReport::contents() const {
  Markup list;
  for (std::size_t index = 0; index < chapters_.size(); ++index) {
    list += Markup::element("li", {}, link(chapterId(index), chapters_[index].title));
  }
  Markup more;
  if (!containers_.isEmpty()) {
    more += Markup::element("li", {}, link("containers", "Containers"));
  }
  if (!acknowledgements_.isEmpty()) {
    more += Markup::element("li", {}, link("acknowledgements", "What the SDK was told"));
  }
  if (!coverage_.isEmpty()) {
    more += Markup::element("li", {}, link("hooks", "Hooks"));
  }
  return Markup::element("ol", {}, list) + Markup::element("ul", {}, more);
}

Markup HtmlReport::timeline() const {
  Markup all;
  for (std::size_t index = 0; index < chapters_.size(); ++index) {
    const std::string id = chapterId(index);
    all += Markup::element("section", {{"id", id}, {"class", "chapter"}, {"aria-labelledby", id + "-title"}},
                           Markup::element("h2", {{"id", id + "-title"}}, Markup::text(chapters_[index].title)) +
                               chapters_[index].steps);
  }
  return all;
}

Markup HtmlReport::acknowledgements() const {
  Markup head;
  for (const char* title : {"Step", "App", "Call", "Result", "Message"}) {
    head += Markup::element("th", {{"scope", "col"}}, Markup::text(title));
  }
  return Markup::element(
      "div", {{"class", "scroll"}, {"tabindex", "0"}, {"role", "region"}, {"aria-label", "What the SDK was told"}},
      Markup::element("table", {{"class", "calls"}},
                      Markup::element("thead", {}, Markup::element("tr", {}, head)) +
                          Markup::element("tbody", {}, acknowledgements_)));
}

void HtmlReport::write(const Outcome& outcome) {
  const std::string title = !title_.empty() ? title_
                            : setting_      ? setting_->bundle.name() + " on the device"
                                            : "Nothing";
  Markup tables;
  if (!containers_.isEmpty()) {
    tables +=
        section("containers", "Containers",
                "What lay in each app's container before its launch and after its end, and the protection class of "
                "each item.",
                containers_);
  }
  if (!acknowledgements_.isEmpty()) {
    tables += section("acknowledgements", "What the SDK was told",
                      "Each change is acknowledged; messages go to the user by the SDK.", acknowledgements());
  }
  if (!coverage_.isEmpty()) {
    tables += section("hooks", "Hooks",
                      "The platform's methods that the library intercepts, and how often they were "
                      "called.",
                      coverage_.table());
  }
  folder_.write(filled(kReportPage, {{"style", Markup::literal(std::string(kReportStyle))},
                                     {"title", Markup::text(title)},
                                     {"head", head(outcome)},
                                     {"contents", contents()},
                                     {"timeline", timeline()},
                                     {"tables", tables}}));
}

Outcome playReported(Report& shown, HtmlReport* html, const std::function<Outcome(Report&)>& play) {
  if (html == nullptr) {
    return play(shown);
  }
  Outcome outcome;
  const auto both = makeSharedReport({&shown, html});
  try {
    outcome = play(*both);
  } catch (const Failure& failure) {
    html->write({failure.status(), failure.what()});
    throw;
  }
  html->write(outcome);
  shown.wrote(html->page());
  return outcome;
}

} // namespace qvdevice

#include "StepMarkup.h"

#include <algorithm>

#include "Findings.h"
#include "Words.h"

namespace qvdevice {

namespace {

using Json = nlohmann::ordered_json;

/// Whether a text is what a picture is sent as: an app could say anything else.
bool isBase64(const std::string& text) {
  return !text.empty() && std::all_of(text.begin(), text.end(), [](char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '+' || c == '/' ||
           c == '=';
  });
}

Markup picture(const Step& step) {
  const auto screen = std::find_if(step.records.rbegin(), step.records.rend(), [](const Json& record) {
    return textOf(record, "kind") == "screen" && isBase64(textOf(record, "png"));
  });
  if (screen == step.records.rend()) {
    return {};
  }
  const std::string title = textOf(*screen, "title");
  Markup::Attributes attributes{{"src", "data:image/png;base64," + textOf(*screen, "png")},
                                {"alt", "The screen, after " + step.title}};
  for (const char* size : {"width", "height"}) {
    if (const auto value = screen->find(size); value != screen->end() && value->is_number()) {
      attributes.emplace_back(size, std::to_string(std::clamp(value->get<int>(), 1, 4096)));
    }
  }
  return Markup::element("figure", {},
                         Markup::empty("img", attributes) +
                             (title.empty() ? Markup() : Markup::element("figcaption", {}, Markup::text(title))));
}

struct Line {
  std::string tag;
  std::string text;
  std::string style;
};

/// What a record says in the log; nothing for what is shown elsewhere.
Line lineOf(const Json& record) {
  const std::string kind = textOf(record, "kind");
  if (kind == "log") {
    const Json level = record.value("level", Json());
    const bool number = level.is_number_integer();
    const long value = number ? level.get<long>() : 0;
    return {"log " + (number ? std::to_string(value) : std::string("?")), textOf(record, "text"),
            value <= 0   ? "level0"
            : value >= 4 ? "detail"
                         : ""};
  }
  if (kind == "output") {
    return {"app", withoutLogPrefix(textOf(record, "text")), "app"};
  }
  if (kind == "lifecycle") {
    return {"app's life", lifecycleInWords(textOf(record, "event")), "life"};
  }
  if (kind == "sdk") {
    return {"SDK", callInWords(record), textOf(record, "call") == "sendEvent:" ? "detail" : "sdk"};
  }
  if (kind == "protection") {
    const std::string from = textOf(record, "from");
    return {"protection",
            textOf(record, "path") + ": " + (from.empty() ? "no class" : inWords(from)) + " → " +
                inWords(textOf(record, "to")),
            "protection"};
  }
  if (kind == "ask") {
    return {"SDK", "asks " + answerInWords(record), "sdk"};
  }
  if (kind == "extension") {
    return {"extension", extensionInWords(record), ""};
  }
  return {};
}

Markup log(const Step& step) {
  Markup rows;
  int count = 0;
  for (const Json& record : step.records) {
    const Line line = lineOf(record);
    if (line.tag.empty()) {
      continue;
    }
    ++count;
    rows += Markup::element("tr", {{"class", line.style}},
                            Markup::element("th", {{"scope", "row"}}, Markup::text(line.tag)) +
                                Markup::element("td", {}, Markup::text(line.text)));
  }
  if (count == 0) {
    return {};
  }
  return Markup::element(
      "details", {{"class", "log"}},
      Markup::element("summary", {}, Markup::text(std::to_string(count) + (count == 1 ? " line" : " lines"))) +
          Markup::element("table", {}, Markup::element("tbody", {}, rows)));
}

struct Look {
  const char* style;
  const char* mark;
  const char* word; // for who does not see the mark
};

Look lookOf(Finding::Tone tone) {
  switch (tone) {
  case Finding::Tone::kAllowed:
    return {"allowed", "✓", "allowed: "};
  case Finding::Tone::kRefused:
    return {"refused", "✕", "refused: "};
  case Finding::Tone::kProtected:
    return {"protected", "◆", ""};
  case Finding::Tone::kPlain:
    break;
  }
  return {"plain", "·", ""};
}

Markup findings(const Step& step) {
  Markup list;
  for (const Finding& finding : findingsOf(step.records)) {
    const Look look = lookOf(finding.tone);
    list += Markup::element(
        "li", {{"class", look.style}},
        Markup::element("span", {{"class", "mark"}, {"aria-hidden", "true"}}, Markup::text(look.mark)) +
            Markup::element(
                "span", {},
                (*look.word == '\0' ? Markup()
                                    : Markup::element("span", {{"class", "unseen"}}, Markup::text(look.word))) +
                    Markup::text(finding.text) +
                    (finding.detail.empty() ? Markup() : Markup::element("small", {}, Markup::text(finding.detail)))));
  }
  return list.isEmpty() ? Markup() : Markup::element("ul", {{"class", "findings"}}, list);
}

} // namespace

Markup stepMarkup(const Step& step, std::size_t number) {
  const char* style = step.kind == Step::Kind::kLaunch    ? "step launch"
                      : step.kind == Step::Kind::kInstall ? "step install"
                                                          : "step";
  const Markup told =
      Markup::element("h3", {},
                      Markup::element("span", {{"class", "number"}}, Markup::text(std::to_string(number))) +
                          Markup::element("span", {}, Markup::text(step.title))) +
      findings(step) + log(step);
  return Markup::element("article", {{"class", style}, {"id", "step-" + std::to_string(number)}},
                         Markup::element("div", {{"class", "told"}}, told) + picture(step));
}

} // namespace qvdevice

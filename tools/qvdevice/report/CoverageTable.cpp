#include "CoverageTable.h"

#include "Words.h"

namespace qvdevice {

void CoverageTable::add(const nlohmann::ordered_json& record) {
  const auto hooks = record.find("hooks");
  if (hooks == record.end() || !hooks->is_array()) {
    return;
  }
  for (const auto& each : *hooks) {
    if (!each.is_object()) {
      continue;
    }
    const bool isClassMethod = each.contains("classMethod") && each["classMethod"] == true;
    Hook& hook = hooks_[textOf(each, "class")][(isClassMethod ? "+" : "-") + textOf(each, "selector")];
    // An app in which it is installed tells more than one that never came so far.
    if (hook.state.empty() || textOf(each, "state") == "installed") {
      hook.state = textOf(each, "state");
      hook.why = textOf(each, "why");
    }
    if (const auto fired = each.find("fired"); fired != each.end() && fired->is_number_unsigned()) {
      hook.fired += fired->get<std::uint64_t>();
      hook.counted = true;
    }
  }
}

std::string CoverageTable::summary() const {
  int installed = 0;
  int called = 0;
  for (const auto& [name, hooks] : hooks_) {
    for (const auto& [selector, hook] : hooks) {
      installed += hook.state == "installed" ? 1 : 0;
      called += hook.fired > 0 ? 1 : 0;
    }
  }
  return std::to_string(called) + " hooks were called; " + std::to_string(installed) + " are installed";
}

Markup CoverageTable::table() const {
  Markup bodies;
  for (const auto& [name, hooks] : hooks_) {
    Markup rows = Markup::element("tr", {{"class", "group"}},
                                  Markup::element("th", {{"scope", "rowgroup"}, {"colspan", "3"}}, Markup::text(name)));
    for (const auto& [selector, hook] : hooks) {
      const std::string state = hook.state + (hook.why.empty() ? "" : ": " + hook.why);
      rows += Markup::element(
          "tr", {{"class", hook.fired > 0 ? "fired" : "silent"}},
          Markup::element("th", {{"scope", "row"}}, Markup::element("code", {}, Markup::text(selector))) +
              Markup::element("td", {}, Markup::text(state)) +
              Markup::element("td", {{"class", "count"}},
                              Markup::text(hook.counted ? std::to_string(hook.fired) : "not counted")));
    }
    bodies += Markup::element("tbody", {}, rows);
  }
  Markup head;
  for (const char* title : {"Method", "State", "Calls"}) {
    head += Markup::element("th", {{"scope", "col"}}, Markup::text(title));
  }
  return Markup::element("div", {{"class", "scroll"}, {"tabindex", "0"}, {"role", "region"}, {"aria-label", "Hooks"}},
                         Markup::element("table", {{"class", "coverage"}},
                                         Markup::element("caption", {}, Markup::text(summary())) +
                                             Markup::element("thead", {}, Markup::element("tr", {}, head)) + bodies));
}

} // namespace qvdevice

#include "Markup.h"

#include <algorithm>
#include <stdexcept>

#include <nlohmann/json.hpp>

namespace qvdevice {

/// The same text in sound UTF-8.
static std::string sound(std::string_view text) {
  const nlohmann::json value = std::string(text);
  const std::string quoted = value.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
  return nlohmann::json::parse(quoted).get<std::string>();
}

static std::string escaped(std::string_view text) {
  std::string html;
  for (const char c : sound(text)) {
    switch (c) {
    case '&':
      html += "&amp;";
      break;
    case '<':
      html += "&lt;";
      break;
    case '>':
      html += "&gt;";
      break;
    case '"':
      html += "&quot;";
      break;
    case '\'':
      html += "&#39;";
      break;
    default:
      if ((static_cast<unsigned char>(c) < ' ' && c != '\n' && c != '\t') || c == '\x7f') {
        html += "\xef\xbf\xbd";
      } else {
        html += c;
      }
    }
  }
  return html;
}

Markup Markup::literal(std::string html) {
  Markup markup;
  markup.html_ = std::move(html);
  return markup;
}

Markup Markup::text(std::string_view text) { return literal(escaped(text)); }

Markup Markup::empty(const char* name, const Attributes& attributes) {
  std::string html = std::string("<") + name;
  for (const auto& [key, value] : attributes) {
    html += std::string(" ") + key + "=\"" + escaped(value) + "\"";
  }
  return literal(html + ">");
}

Markup Markup::element(const char* name, const Attributes& attributes, const Markup& content) {
  return empty(name, attributes) + content + literal(std::string("</") + name + ">");
}

std::string filled(std::string_view page, const std::vector<std::pair<std::string_view, Markup>>& pieces) {
  std::string html;
  for (;;) {
    const std::size_t start = page.find("{{");
    html += page.substr(0, start);
    if (start == std::string_view::npos) {
      return html;
    }
    const std::size_t end = page.find("}}", start);
    const std::string_view name = page.substr(start + 2, end - start - 2);
    const auto piece =
        std::find_if(pieces.begin(), pieces.end(), [name](const auto& each) { return each.first == name; });
    if (end == std::string_view::npos || piece == pieces.end()) {
      throw std::logic_error("the report's template has a place for \"" + std::string(name) + "\", which nobody fills");
    }
    html += piece->second.html();
    page.remove_prefix(end + 2);
  }
}

} // namespace qvdevice

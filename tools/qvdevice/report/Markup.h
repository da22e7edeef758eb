#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace qvdevice {

/// A piece of HTML. It is made of texts, which are escaped, and of elements around such pieces, so nothing that an app
/// says can become markup. Names of elements and attributes are literals of this program.
class Markup {
public:
  using Attributes = std::vector<std::pair<const char*, std::string>>;

  Markup() = default;

  /// A text as a person reads it. What is not UTF-8, or no character of a document, becomes U+FFFD.
  static Markup text(std::string_view text);
  static Markup element(const char* name, const Attributes& attributes, const Markup& content = {});
  /// An element that has no content, and no end.
  static Markup empty(const char* name, const Attributes& attributes);
  /// What is HTML already: a part of a template.
  static Markup literal(std::string html);

  Markup& operator+=(const Markup& more) {
    html_ += more.html_;
    return *this;
  }
  friend Markup operator+(Markup first, const Markup& second) { return first += second; }

  const std::string& html() const { return html_; }
  bool isEmpty() const { return html_.empty(); }

private:
  std::string html_;
};

/// A template with the pieces put in the places of their names, which stand there as {{name}}. Throws std::logic_error
/// for a name that has no piece.
std::string filled(std::string_view page, const std::vector<std::pair<std::string_view, Markup>>& pieces);

} // namespace qvdevice

// Lines for a person at a terminal.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace qvdevice {

enum class Colour { kNone, kBold, kDim, kGreen, kRed, kCyan };

/// Whether standard output is a terminal that shows colours, and nobody asked for none.
bool wantsColour();

/// Whether this byte of UTF-8 belongs to the character before it, and takes no room of its own.
bool isContinuation(char byte);
/// How many characters are seen of a text in UTF-8.
std::size_t shownWidth(const std::string& text);
/// With blanks at its end, up to a width.
std::string padded(std::string text, std::size_t width);

/// Standard output, with colours or without. What would steer the terminal is not passed on to it.
class Terminal {
public:
  explicit Terminal(bool colour) : colour_(colour) {}

  void print(Colour colour, const std::string& line) const { print({{colour, line}}); }
  /// One line of several colours.
  void print(const std::vector<std::pair<Colour, std::string>>& parts) const;

private:
  bool colour_;
};

} // namespace qvdevice

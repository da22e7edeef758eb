#include "Terminal.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include <unistd.h>

namespace qvdevice {

bool wantsColour() {
  const char* refusal = std::getenv("NO_COLOR");
  const char* terminal = std::getenv("TERM");
  return isatty(STDOUT_FILENO) != 0 && (refusal == nullptr || *refusal == '\0') &&
         (terminal == nullptr || std::strcmp(terminal, "dumb") != 0);
}

bool isContinuation(char byte) { return (static_cast<unsigned char>(byte) & 0xc0) == 0x80; }

std::size_t shownWidth(const std::string& text) {
  return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char c) { return !isContinuation(c); }));
}

std::string padded(std::string text, std::size_t width) {
  if (const std::size_t shown = shownWidth(text); shown < width) {
    text.append(width - shown, ' ');
  }
  return text;
}

static const char* codeOf(Colour colour) {
  switch (colour) {
  case Colour::kBold:
    return "\x1b[1m";
  case Colour::kDim:
    return "\x1b[2m";
  case Colour::kGreen:
    return "\x1b[32m";
  case Colour::kRed:
    return "\x1b[31m";
  case Colour::kCyan:
    return "\x1b[36m";
  case Colour::kNone:
    break;
  }
  return nullptr;
}

/// An app's words are to be read, not obeyed.
static std::string harmless(std::string text) {
  std::replace_if(
      text.begin(), text.end(),
      [](char c) { return (static_cast<unsigned char>(c) < ' ' && c != '\n' && c != '\t') || c == '\x7f'; }, '?');
  return text;
}

void Terminal::print(const std::vector<std::pair<Colour, std::string>>& parts) const {
  for (const auto& [colour, text] : parts) {
    const char* code = colour_ ? codeOf(colour) : nullptr;
    std::printf(code == nullptr ? "%s%s" : "%s%s\x1b[0m", code == nullptr ? "" : code, harmless(text).c_str());
  }
  std::printf("\n");
  std::fflush(stdout);
}

} // namespace qvdevice

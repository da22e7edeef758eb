#include "Screen/Text.h"

#include <algorithm>

namespace qvdevice {

namespace {

constexpr char32_t kUnknown = 0xfffd;
constexpr char32_t kEllipsis = 0x2026;
constexpr double kNarrowest = 0.15; // of a letter's size

bool isHighHalf(char32_t unit) { return unit >= 0xd800 && unit < 0xdc00; }
bool isLowHalf(char32_t unit) { return unit >= 0xdc00 && unit < 0xe000; }

/// Has no look of its own: control characters, joiners, marks of direction, variants of emoji.
bool isInvisible(char32_t letter) {
  return (letter < 0x20 && letter != '\n') || (letter >= 0x7f && letter < 0xa0) || letter == 0xad ||
         (letter >= 0x200b && letter <= 0x200f) || (letter >= 0x202a && letter <= 0x202e) ||
         (letter >= 0x2066 && letter <= 0x2069) || (letter >= 0xfe00 && letter <= 0xfe0f) || letter == 0xfeff;
}

/// How many of the letters go on a line of that width: to the last blank, or as many as fit; at least one.
std::size_t fitting(const std::u32string &text, const Font &font, double width) {
  const auto fits = [&](std::size_t count) { return setLine(text.substr(0, count), font).width <= width; };
  // Not more than would fit if all were of the narrowest letters: a long text is not set whole for each of its lines.
  const auto bound = static_cast<std::size_t>(width / (font.size * kNarrowest)) + 2;
  if (text.size() <= bound && fits(text.size())) return text.size();
  std::size_t most = 1, tooMany = std::min(text.size(), bound);
  while (tooMany - most > 1) {
    const std::size_t middle = most + (tooMany - most) / 2;
    (fits(middle) ? most : tooMany) = middle;
  }
  // A blank that does not fit any more breaks the line as well.
  const std::size_t blank = text.rfind(U' ', most);
  return blank == std::u32string::npos || blank == 0 ? most : blank;
}

Line endingWithEllipsis(std::u32string text, const Font &font, double width) {
  text.resize(std::min(text.size(), fitting(text, font, width)));
  text += kEllipsis;
  while (text.size() > 1 && setLine(text, font).width > width)
    text.erase(text.size() - 2, 1);
  return setLine(text, font);
}

} // namespace

std::u32string charactersOf(NSString *string, std::size_t most) {
  std::u32string letters;
  const NSUInteger length = [string length];
  for (NSUInteger at = 0; at < length && letters.size() < most; ++at) {
    char32_t letter = [string characterAtIndex:at];
    const char32_t next = at + 1 < length ? [string characterAtIndex:at + 1] : char32_t{0};
    if (isHighHalf(letter) && isLowHalf(next)) {
      letter = 0x10000 + ((letter - 0xd800) << 10) + (next - 0xdc00);
      ++at;
    } else if (isHighHalf(letter) || isLowHalf(letter)) {
      letter = kUnknown;
    }
    if (letter == '\t') letter = ' ';
    if (!isInvisible(letter)) letters += letter;
  }
  return letters;
}

std::vector<Line> setText(const std::u32string &whole, const Font &font, double width, std::size_t mostLines) {
  // Blanks at the end need no room, and are no reason for an ellipsis.
  const std::u32string text = whole.substr(0, whole.find_last_not_of(U" \n") + 1);
  std::vector<Line> lines;
  std::size_t start = 0;
  while (start < text.size() && lines.size() < mostLines) {
    const std::size_t end = std::min(text.find(U'\n', start), text.size());
    const std::u32string paragraph = text.substr(start, end - start);
    const std::size_t count = paragraph.empty() ? 0 : fitting(paragraph, font, width);
    std::size_t next = start + count;
    if (count == paragraph.size()) {
      ++next; // the line break
    } else {
      while (next < end && text[next] == U' ')
        ++next;
    }
    const bool isLast = lines.size() + 1 == mostLines;
    lines.push_back(isLast && next < text.size() ? endingWithEllipsis(paragraph, font, width)
                                                 : setLine(paragraph.substr(0, count), font));
    start = next;
  }
  return lines;
}

} // namespace qvdevice

#include "AppIdentifier.hpp"

#include <algorithm>
#include <array>

namespace qvsb {

namespace {

// The same as kZBBundleIDSplitter, as a code unit.
constexpr unichar kSplitter = u'.';

} // namespace

bool hasSeveralPieces(std::u16string_view pattern) {
  const auto first = pattern.find_first_not_of(kSplitter);
  if (first == std::u16string_view::npos) {
    return false;
  }
  const auto last = pattern.find_last_not_of(kSplitter);
  return pattern.substr(first, last - first).find(kSplitter) != std::u16string_view::npos;
}

AppIdentifier::AppIdentifier(const StringReader& identifier) : units_(identifier.length()) {
  identifier.getCharacters(units_.data(), NSRange{0, units_.size()});
}

bool AppIdentifier::matches(const StringReader& pattern) const {
  const NSUInteger length = pattern.length();
  if (length > units_.size()) {
    return false;
  }
  // The patterns of a list begin alike, often up to their last piece: their ends tell them apart soonest.
  const NSUInteger end = std::min<NSUInteger>(length, 6);
  if (!hasAt(pattern, NSRange{length - end, end}) || !hasAt(pattern, NSRange{0, length - end})) {
    return false;
  }
  // From here on the pattern's text is known: the identifier's own first units.
  return length == units_.size() || hasSeveralPieces({units_.data(), length});
}

/// Whether the units of `text` in that range are those that stand there in the identifier.
bool AppIdentifier::hasAt(const StringReader& text, NSRange range) const {
  std::array<unichar, 128> units;
  while (range.length > 0) {
    const NSUInteger count = std::min<NSUInteger>(units.size(), range.length);
    text.getCharacters(units.data(), NSRange{range.location, count});
    if (std::u16string_view(units.data(), count) != std::u16string_view(units_.data() + range.location, count)) {
      return false;
    }
    range.location += count;
    range.length -= count;
  }
  return true;
}

} // namespace qvsb

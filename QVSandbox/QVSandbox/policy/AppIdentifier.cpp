#include "AppIdentifier.hpp"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>

namespace qvsb {

namespace {

// The same as kZBBundleIDSplitter, as a code unit.
constexpr unichar kSplitter = u'.';

/// Several units at once.
template <class Unit> std::uint64_t wordAt(const Unit* units) {
  std::array<Unit, sizeof(std::uint64_t) / sizeof(Unit)> word;
  std::copy_n(units, word.size(), word.data());
  return std::bit_cast<std::uint64_t>(word);
}

/// Word by word, the last one over the one before it. A string_view's comparison of bytes is a call, and it reads wider
/// pieces than the pattern was copied in just before, for which the processor waits: together that takes as long as the
/// rest of a pattern.
template <class Unit> bool areEqual(const Unit* left, const Unit* right, NSUInteger length) {
  constexpr NSUInteger step = sizeof(std::uint64_t) / sizeof(Unit);
  if (length < step) {
    return std::equal(left, left + length, right);
  }
  std::uint64_t difference = wordAt(left + length - step) ^ wordAt(right + length - step);
  for (NSUInteger at = 0; at + step < length; at += step) {
    difference |= wordAt(left + at) ^ wordAt(right + at);
  }
  return difference == 0;
}

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
  latin1_.reserve(units_.size());
  for (const unichar unit : units_) {
    if (unit > 0xff) {
      break;
    }
    latin1_.push_back(static_cast<char>(unit));
  }
  read_.resize(latin1_.size() + 1);
}

bool AppIdentifier::matches(const StringReader& pattern) const {
  const NSUInteger length = pattern.length();
  if (length > units_.size() || !beginsWith(pattern, length)) {
    return false;
  }
  // From here on the pattern's text is known: the identifier's own first units.
  return length == units_.size() || hasSeveralPieces({units_.data(), length});
}

bool AppIdentifier::beginsWith(const StringReader& pattern, NSUInteger length) const {
  if (length <= latin1_.size() && pattern.getLatin1(read_.data(), read_.size())) [[likely]] {
    return areEqual<char>(read_.data(), latin1_.data(), length);
  }
  return beginsWithUnitsOf(pattern, length);
}

bool AppIdentifier::beginsWithUnitsOf(const StringReader& pattern, NSUInteger length) const {
  std::array<unichar, 128> units;
  NSRange range{0, 0};
  for (; range.location < length; range.location += range.length) {
    range.length = std::min<NSUInteger>(units.size(), length - range.location);
    pattern.getCharacters(units.data(), range);
    if (!areEqual<unichar>(units.data(), units_.data() + range.location, range.length)) {
      return false;
    }
  }
  return true;
}

} // namespace qvsb

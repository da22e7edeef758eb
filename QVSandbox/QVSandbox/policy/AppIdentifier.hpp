// The matching of an app identifier against the patterns of a whitelist.
#pragma once

#include <string_view>
#include <vector>

#include "StringReader.hpp"

namespace qvsb {

/// An app identifier, read once to be compared with any number of patterns, on one thread.
class AppIdentifier {
public:
  /// Of what the reader has open.
  explicit AppIdentifier(const StringReader& identifier);

  /// Whether a whitelist's pattern matches. A pattern of several pieces does when the identifier begins with it, one of
  /// a single piece when the identifier is equal to it. Characters are compared as they stand: case counts, nothing is
  /// a wildcard, and a prefix may end within a piece. Allocates nothing.
  bool matches(const StringReader& pattern) const;

private:
  bool beginsWith(const StringReader& pattern, NSUInteger length) const;
  bool beginsWithUnitsOf(const StringReader& pattern, NSUInteger length) const;

  std::vector<unichar> units_;
  std::vector<char> latin1_;       // the units as bytes, up to the first that is none
  mutable std::vector<char> read_; // a pattern's bytes and a zero, for a pattern as long as latin1_
};

/// Whether the pattern, without the dots around it, has more than one piece.
bool hasSeveralPieces(std::u16string_view pattern);

} // namespace qvsb

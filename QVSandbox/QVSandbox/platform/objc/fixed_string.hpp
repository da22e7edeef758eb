// A string usable as a template argument, so that a selector, a class name or a string constant written in the source
// is one object however often it is written.
#pragma once

#include <cstddef>

namespace qvsb {

template <std::size_t N> struct FixedString {
  char text[N]{};

  consteval FixedString(const char (&literal)[N]) {
    for (std::size_t i = 0; i < N; ++i) {
      text[i] = literal[i];
    }
  }

  /// The text's length in bytes, without the terminating zero.
  static constexpr std::size_t length = N - 1;
};

} // namespace qvsb

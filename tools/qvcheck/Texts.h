// The file of texts that a binary holds, and of those that it must not hold.
#pragma once

#include <string>
#include <vector>

namespace qvcheck {

struct Texts {
  struct Text {
    std::string kind; ///< what it is called in a finding: "the selector"
    std::string text;
  };
  std::vector<Text> present;
  std::vector<std::string> absent; ///< anywhere in the file, also as a part of something else

  /// Reads a JSON object of the arrays `selectors`, `classes`, `texts` and `absent`, in which `//` begins a comment.
  /// Throws std::runtime_error with a sentence about a file that is something else or names a text twice.
  static Texts read(const std::string& path);
};

} // namespace qvcheck

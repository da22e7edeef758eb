// What is wrong, told as it is found.
#pragma once

#include <cstdio>
#include <string>

namespace qvcheck {

class Findings {
public:
  /// Says that `where` breaks a promise, on standard error.
  void wrong(const std::string& where, const std::string& sentence) {
    std::fprintf(stderr, "%s: %s\n", where.c_str(), sentence.c_str());
    ++count_;
  }

  /// Says so when the two differ.
  void expect(const std::string& where, const std::string& what, const std::string& expected,
              const std::string& found) {
    if (found != expected) {
      wrong(where, what + " is \"" + found + "\", expected \"" + expected + "\"");
    }
  }

  int count() const { return count_; }

private:
  int count_ = 0;
};

} // namespace qvcheck

#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace qvdevice {

/// The answers of a process that is told one thing after the other, and answers each with a line. One that comes after
/// nobody waits for it any more is not taken for the next one's.
class Answers {
public:
  /// It has been told something more.
  void expect() { ++told_; }
  /// What it wrote.
  void add(std::string_view text) { text_ += text; }
  /// The answer to what it was told last, once it is there.
  std::optional<std::string> take();
  /// Whether it has not answered yet.
  bool isOwed();

private:
  void dropLateOnes();

  std::string text_;
  std::size_t told_ = 0;
  std::size_t answered_ = 0;
};

} // namespace qvdevice

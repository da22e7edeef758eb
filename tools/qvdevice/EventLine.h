#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include <nlohmann/json.hpp>

namespace qvdevice {

/// One line of an events file while it is being read: words, values in JSON, a text; blanks between them. A "#" at the
/// start or after a blank begins a comment, which reads as the end of the line.
class EventLine {
public:
  /// `file` and `text` must outlive the line. Without a file's name the line stands for itself.
  EventLine(const std::filesystem::path& file, std::size_t number, std::string_view text)
      : file_(file), number_(number), text_(text) {}

  std::size_t number() const { return number_; }

  /// Whether nothing more stands here.
  bool atEnd();
  /// The next word; empty at the end.
  std::string_view word();
  /// The next word, or a string in JSON with blanks in it; `needed` says what is missing when there is none.
  std::string name(const std::string& needed);
  /// The next word, a URL; `what` it belongs to goes into the refusal of what is none.
  std::string_view url(const std::string& what);
  /// The next value, written as JSON; `needed` says what is missing when there is none.
  nlohmann::ordered_json json(const std::string& needed);
  /// All that is left, without blanks at its end; or, when a quote begins it, a string in JSON.
  std::string text(const std::string& needed);

  /// Refuses what was read last, or the place where something more was expected.
  [[noreturn]] void refuse(const std::string& reason) const { refuseAt(start_, reason); }
  [[noreturn]] void refuseAt(std::size_t place, const std::string& reason) const;
  /// Where the thing that was read last begins.
  std::size_t place() const { return start_; }

private:
  std::size_t endOfJson() const;

  const std::filesystem::path& file_;
  std::size_t number_;
  std::string_view text_;
  std::size_t start_ = 0;
  std::size_t end_ = 0;
};

} // namespace qvdevice

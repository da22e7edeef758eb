#include "Answers.h"

namespace qvdevice {

void Answers::dropLateOnes() {
  for (std::size_t end = 0; told_ > answered_ + 1 && (end = text_.find('\n')) != std::string::npos; ++answered_) {
    text_.erase(0, end + 1);
  }
}

std::optional<std::string> Answers::take() {
  dropLateOnes();
  const std::size_t end = text_.find('\n');
  if (told_ != answered_ + 1 || end == std::string::npos) {
    return std::nullopt;
  }
  ++answered_;
  std::string line = text_.substr(0, end);
  text_.erase(0, end + 1);
  return line;
}

bool Answers::isOwed() {
  dropLateOnes();
  return told_ > answered_ && text_.find('\n') == std::string::npos;
}

} // namespace qvdevice

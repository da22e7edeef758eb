#pragma once

#include <filesystem>
#include <string>

#include <nlohmann/json.hpp>

namespace qvdevice {

/// A folder that the pictures of the screen are written to, in their order.
class ScreenFolder {
public:
  /// The folder is made when it is not there. Throws Failure when nothing can be written there.
  explicit ScreenFolder(std::filesystem::path folder);

  /// Writes a picture, base64, as the next one; `title` becomes a part of its name. Answers the name, as in
  /// "01-notes.png". Throws Failure.
  std::string write(const std::string& title, const std::string& png);

private:
  std::filesystem::path folder_;
  int count_ = 0;
};

} // namespace qvdevice

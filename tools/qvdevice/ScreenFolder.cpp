#include "ScreenFolder.h"

#include <cctype>
#include <cerrno>
#include <fstream>
#include <system_error>

#include <unistd.h>

#include "Failure.h"
#include "Policies.h"

namespace fs = std::filesystem;

namespace qvdevice {

/// What is no letter and no digit of ASCII becomes a hyphen, several of them one.
static std::string asFileName(const std::string& title) {
  constexpr std::size_t kLongest = 60;
  std::string name;
  for (const char each : title.substr(0, kLongest)) {
    const auto byte = static_cast<unsigned char>(each);
    if (byte < 0x80 && std::isalnum(byte) != 0) {
      name += static_cast<char>(std::tolower(byte));
    } else if (!name.empty() && name.back() != '-') {
      name += '-';
    }
  }
  while (!name.empty() && name.back() == '-') {
    name.pop_back();
  }
  return name.empty() ? "screen" : name;
}

ScreenFolder::ScreenFolder(fs::path folder) : folder_(std::move(folder)) {
  std::error_code error;
  fs::create_directories(folder_, error);
  if (!error && !fs::is_directory(folder_)) {
    error = std::make_error_code(std::errc::not_a_directory);
  }
  if (!error && access(folder_.c_str(), W_OK | X_OK) != 0) {
    error = std::error_code(errno, std::generic_category());
  }
  if (error) {
    throw Failure(kCannotStart,
                  "no pictures of the screen can be written to " + folder_.string() + ": " + error.message());
  }
}

std::string ScreenFolder::write(const std::string& title, const std::string& png) {
  ++count_;
  const std::string name = (count_ < 10 ? "0" : "") + std::to_string(count_) + "-" + asFileName(title) + ".png";
  const auto bytes = zorbel::decodeBase64(png);
  std::ofstream file(folder_ / name, std::ios::binary | std::ios::trunc);
  if (bytes) {
    file.write(bytes->data(), static_cast<std::streamsize>(bytes->size()));
  }
  file.close();
  if (!bytes || !file) {
    throw Failure(kCannotStart, "the picture of the screen " + (folder_ / name).string() + " cannot be written");
  }
  return name;
}

} // namespace qvdevice

#include "LogFolder.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <ctime>
#include <functional>
#include <map>
#include <system_error>

#include <fcntl.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace zorbel {

namespace {

/// The date, and the number of one that was not the first of its date.
using Age = std::pair<std::string, unsigned>;

struct Parts {
  std::string name;
  Age age;
};

bool isDigit(char c) { return c >= '0' && c <= '9'; }

bool isDate(std::string_view text) {
  static constexpr std::string_view kForm = "_0000-00-00T00-00-00.000Z";
  return std::equal(text.begin(), text.end(), kForm.begin(), kForm.end(),
                    [](char c, char form) { return form == '0' ? isDigit(c) : c == form; });
}

/// Nothing for a file that has not been named here.
std::optional<Parts> partsOf(std::string_view file) {
  static constexpr std::size_t kDateLength = 25;
  static constexpr std::string_view kEnding = ".log";
  if (!file.ends_with(kEnding)) {
    return std::nullopt;
  }
  file.remove_suffix(kEnding.size());
  unsigned number = 1;
  if (const std::size_t dash = file.rfind("Z-"); dash != std::string_view::npos) {
    const char* const end = file.data() + file.size();
    const auto [rest, error] = std::from_chars(file.data() + dash + 2, end, number);
    if (rest != end || error != std::errc()) {
      return std::nullopt;
    }
    file = file.substr(0, dash + 1);
  }
  if (file.size() <= kDateLength || !isDate(file.substr(file.size() - kDateLength))) {
    return std::nullopt;
  }
  const std::string_view name = file.substr(0, file.size() - kDateLength);
  return Parts{std::string(name), {std::string(file.substr(name.size())), number}};
}

} // namespace

std::string LogFolder::dated(std::string_view name, double milliseconds) {
  const double seconds = std::floor(milliseconds / 1000);
  const auto whole = static_cast<std::time_t>(seconds);
  std::tm parts{};
  gmtime_r(&whole, &parts);
  char date[64];
  // No colons, which not every place that log files are sent to can have in a name.
  const std::size_t length = std::strftime(date, sizeof date, "_%Y-%m-%dT%H-%M-%S", &parts);
  std::snprintf(date + length, sizeof date - length, ".%03dZ",
                static_cast<int>(std::floor(milliseconds - seconds * 1000)));
  return std::string(name) + date;
}

void LogFolder::rotate(std::size_t kept) const {
  std::map<std::string, std::map<Age, fs::path, std::greater<>>> files;
  std::error_code error;
  for (fs::directory_iterator entry(path_, error), end; !error && entry != end; entry.increment(error)) {
    std::error_code ignored;
    const auto parts = partsOf(entry->path().filename().string());
    if (parts && entry->symlink_status(ignored).type() == fs::file_type::regular) {
      files[parts->name].emplace(parts->age, entry->path());
    }
  }
  for (const auto& [name, ofThatName] : files) {
    std::size_t count = 0;
    for (const auto& [age, file] : ofThatName) {
      if (++count > kept) {
        fs::remove(file, error);
      }
    }
  }
}

std::optional<fs::path> LogFolder::create(const std::string& name) const {
  constexpr int kTries = 1000;
  if (name.empty() || name.find('/') != std::string::npos || name.find('\0') != std::string::npos) {
    return std::nullopt;
  }
  std::error_code ignored;
  fs::create_directories(path_, ignored);
  for (int number = 1; number <= kTries; ++number) {
    const fs::path file = path_ / (name + (number == 1 ? "" : "-" + std::to_string(number)) + ".log");
    const int descriptor = ::open(file.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, 0644);
    if (descriptor >= 0) {
      ::close(descriptor);
      return file;
    }
    if (errno != EEXIST) {
      return std::nullopt;
    }
  }
  return std::nullopt;
}

} // namespace zorbel

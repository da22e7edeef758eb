#pragma once

#include <cstdint>
#include <mutex>
#include <optional>
#include <string>

namespace qvdevice {

/// The newest picture of the screen. Any thread.
class Picture {
public:
  /// Takes a PNG; the number that it has from now on, the old one when it is the same picture.
  std::uint64_t take(std::string png) {
    const std::lock_guard locked(lock_);
    if (png != png_) {
      png_ = std::move(png);
      ++number_;
    }
    return number_;
  }

  /// The PNG; nothing before the first one.
  std::optional<std::string> png() const {
    const std::lock_guard locked(lock_);
    return number_ == 0 ? std::nullopt : std::optional(png_);
  }

private:
  mutable std::mutex lock_;
  std::string png_;
  std::uint64_t number_ = 0;
};

} // namespace qvdevice

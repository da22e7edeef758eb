#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

/// A folder outside, one for a container and one for a device in it, for one test. Removed after it.
class Folders : public testing::Test {
protected:
  Folders();
  ~Folders() override;

  /// Whether a file of that name is outside.
  bool isOutside(const std::string& name) const { return std::filesystem::exists(outside / name); }

  std::filesystem::path outside;
  std::string container;
  std::string device;
};

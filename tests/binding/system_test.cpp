// What the library declares of the C library, compared with this system's own headers.
#include "platform/System/descriptor.hpp"
#include "platform/System/stdio.hpp"

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>

#include <fcntl.h>
#include <unistd.h>

#include <gtest/gtest.h>

TEST(System, hasTheValuesOfItsHeaders) {
  EXPECT_EQ(qvsb::kOpenReadWrite, O_RDWR);
  EXPECT_EQ(qvsb::kOpenAppend, O_APPEND);
  EXPECT_EQ(qvsb::kOpenCreate, O_CREAT);
  EXPECT_EQ(qvsb::kStandardErrorDescriptor, STDERR_FILENO);
}

TEST(System, hasTheSignaturesOfItsHeaders) {
  static_assert(sizeof(int) == sizeof(mode_t));
  static_assert(std::is_same_v<decltype(&::open), int (*)(const char*, int, ...)>);
  static_assert(std::is_same_v<decltype(&::dup2), int (*)(int, int) noexcept>);
  static_assert(std::is_same_v<decltype(&::readlink), long (*)(const char*, char*, unsigned long) noexcept>);
  static_assert(std::is_same_v<decltype(&::fileno), int (*)(FILE*) noexcept>);
  static_assert(std::is_same_v<qvsb::CStream, FILE>);
}

TEST(System, hasOneErrorNumberAThread) {
  errno = 42;
  EXPECT_EQ(qvsb::errorNumber(), 42);
  EXPECT_EQ(qvsb::open("/nowhere/file", qvsb::kOpenReadWrite, 0), -1);
  EXPECT_EQ(qvsb::errorNumber(), ENOENT);
  EXPECT_EQ(qvsb::duplicate(-1, 2), -1);
  EXPECT_EQ(qvsb::errorNumber(), EBADF);
}

TEST(System, hasItsStandardErrorStream) {
  EXPECT_EQ(qvsb::standardError(), stderr);
  EXPECT_EQ(qvsb::descriptorOf(stderr), STDERR_FILENO);
}

TEST(System, namesTheFileBehindADescriptorAndEndsTheNameWithAZero) {
  const int descriptor = open("/dev/null", O_RDONLY | O_CLOEXEC);
  std::array<char, qvsb::kPathSize> path;
  path.fill('x');
  EXPECT_TRUE(qvsb::pathOfDescriptor(descriptor, path));
  EXPECT_STREQ(path.data(), "/dev/null");
  close(descriptor);
  EXPECT_FALSE(qvsb::pathOfDescriptor(descriptor, path));
  EXPECT_FALSE(qvsb::pathOfDescriptor(-1, path));
}

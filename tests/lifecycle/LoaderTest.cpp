// What the library declares of the loader is what the system has.
#include "platform/System/loader.hpp"

#include <cstddef>

#include <dlfcn.h>

#include <gtest/gtest.h>

static_assert(sizeof(QVSBImageInfo) == sizeof(Dl_info));
static_assert(offsetof(QVSBImageInfo, path) == offsetof(Dl_info, dli_fname));
static_assert(offsetof(QVSBImageInfo, base) == offsetof(Dl_info, dli_fbase));
static_assert(offsetof(QVSBImageInfo, nearestSymbol) == offsetof(Dl_info, dli_sname));
static_assert(offsetof(QVSBImageInfo, nearestSymbolAddress) == offsetof(Dl_info, dli_saddr));

namespace {
int ofThisExecutable;
}

TEST(Loader, FindsTheImageOfAnAddress) {
  EXPECT_EQ(qvsb::baseOfImageAt(&ofThisExecutable), qvsb::baseOfMainExecutable());
  EXPECT_NE(qvsb::baseOfImageAt(&ofThisExecutable), nullptr);
  const void* const elsewhere = qvsb::baseOfImageAt(dlsym(RTLD_DEFAULT, "dladdr"));
  EXPECT_NE(elsewhere, nullptr);
  EXPECT_NE(elsewhere, qvsb::baseOfMainExecutable());
}

TEST(Loader, FindsNoImageForAnAddressThatLiesInNone) {
  const int onTheStack = 0;
  EXPECT_EQ(qvsb::baseOfImageAt(&onTheStack), nullptr);
  EXPECT_EQ(qvsb::baseOfImageAt(nullptr), nullptr);
}

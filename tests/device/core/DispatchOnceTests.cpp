// What C++ alone can see: in Objective-C++ a C++ exception is not caught by its type on this runtime.

#include <dispatch/dispatch.h>
#include <gtest/gtest.h>

#include <stdexcept>

TEST(OnceInCxx, ThatRaisedIsTriedAgain) {
  dispatch_once_t predicate = 0;
  EXPECT_THROW(dispatch_once_f(&predicate, nullptr, [](void*) { throw std::runtime_error("no"); }), std::runtime_error);
  int runs = 0;
  dispatch_once_f(&predicate, &runs, [](void* count) { ++*static_cast<int*>(count); });
  EXPECT_EQ(runs, 1);
}

// The pasteboard snapshot at the start of an instance's life.
#include "policy/ZorbelUtilState.hpp"

#include <gtest/gtest.h>

using namespace qvsb;

class Snapshot : public testing::Test {
protected:
  void SetUp() override { registerZorbelUtil(); }

private:
  const AutoreleasePool pool_;
};

TEST_F(Snapshot, OfTheSharedInstanceIsAnEmptyArray) {
  const NSArray snapshot = ZorbelUtilState::of(ZorbelUtil::instance()).pasteboardSnapshot();
  ASSERT_TRUE(snapshot);
  EXPECT_TRUE(snapshot.isKindOfClass(NSArray::classObject()));
  EXPECT_EQ(send<NSUInteger>(snapshot, "count"_sel), 0U);
}

TEST_F(Snapshot, OfAnInstanceThatComesTooLateIsNil) {
  ASSERT_TRUE(ZorbelUtil::instance());
  const auto second =
      Strong<ZorbelUtil>::adopt(send<ZorbelUtil>(send<Object>(ZorbelUtil::classObject(), "alloc"_sel), "init"_sel));
  EXPECT_FALSE(ZorbelUtilState::of(second.get()).pasteboardSnapshot());
}

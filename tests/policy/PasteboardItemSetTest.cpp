// The set that the guard reckons with, beyond the few items of most pasteboards.
#include "policy/PasteboardItemSet.hpp"

#include "platform/Foundation/NSDictionary.hpp"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using namespace qvsb;

class ItemSet : public testing::Test {
protected:
  static NSDictionary item(int number) {
    return NSDictionary::dictionaryWithObject_forKey(NSString::stringWithFormat("item %d"_ns, number), "type"_ns);
  }

private:
  const AutoreleasePool pool_;
};

std::string textOf(NSObject item) {
  return NSString::from(NSDictionary::from(item).objectForKey("type"_ns)).UTF8String();
}

} // namespace

TEST_F(ItemSet, IsEmptyAtFirst) {
  const PasteboardItemSet set;
  EXPECT_TRUE(set.empty());
  EXPECT_EQ(set.size(), 0u);
  EXPECT_FALSE(set.contains(item(1)));
  EXPECT_EQ(set.begin(), set.end());
}

TEST_F(ItemSet, HoldsEqualItemsOnceAndInTheOrderInWhichTheyCame) {
  PasteboardItemSet set;
  for (const int number : {5, 3, 5, 9, 3, 1})
    set.insert(item(number));
  std::vector<std::string> texts;
  for (const NSObject each : set)
    texts.push_back(textOf(each));
  EXPECT_EQ(texts, (std::vector<std::string>{"item 5", "item 3", "item 9", "item 1"}));
}

TEST_F(ItemSet, KeepsTheFirstOfEqualItems) {
  const NSDictionary first = item(1);
  const NSDictionary second = item(1);
  PasteboardItemSet set;
  set.insert(first);
  set.insert(second);
  ASSERT_EQ(set.size(), 1u);
  EXPECT_EQ(*set.begin(), first);
}

TEST_F(ItemSet, FindsEachOfManyAndNothingElse) {
  PasteboardItemSet set;
  for (int number = 0; number < 3000; ++number)
    set.insert(item(number));
  EXPECT_EQ(set.size(), 3000u);
  for (int number = 0; number < 3000; ++number)
    EXPECT_TRUE(set.contains(item(number))) << number;
  for (int number = 3000; number < 3100; ++number)
    EXPECT_FALSE(set.contains(item(number))) << number;
}

TEST_F(ItemSet, EqualsOneOfTheSameItemsInAnotherOrder) {
  PasteboardItemSet up, down, fewer, others;
  for (int number = 0; number < 100; ++number) {
    up.insert(item(number));
    down.insert(item(99 - number));
    if (number > 0) fewer.insert(item(number));
    others.insert(item(number + 1));
  }
  EXPECT_TRUE(up == down);
  EXPECT_FALSE(up == fewer);
  EXPECT_FALSE(fewer == up);
  EXPECT_FALSE(up == others);
  EXPECT_TRUE(PasteboardItemSet() == PasteboardItemSet());
}

#include "Answers.h"

#include <gtest/gtest.h>

namespace {

using qvdevice::Answers;

TEST(Answers, areTakenOnceAndWhole) {
  Answers answers;
  answers.expect();
  answers.add("{\"ok\":");
  EXPECT_EQ(answers.take(), std::nullopt);
  EXPECT_TRUE(answers.isOwed());
  answers.add("true}\n");
  EXPECT_FALSE(answers.isOwed());
  EXPECT_EQ(answers.take(), "{\"ok\":true}");
  EXPECT_EQ(answers.take(), std::nullopt);
  EXPECT_FALSE(answers.isOwed());
}

TEST(Answers, thatComeLateAreNotTakenForTheNextOnes) {
  Answers answers;
  answers.expect();
  answers.expect();
  answers.add("first\n");
  EXPECT_TRUE(answers.isOwed());
  EXPECT_EQ(answers.take(), std::nullopt);
  answers.add("second\n");
  EXPECT_FALSE(answers.isOwed());
  EXPECT_EQ(answers.take(), "second");
}

TEST(Answers, thatComeTogetherAreThatOfTheLast) {
  Answers answers;
  for (int i = 0; i < 3; ++i) {
    answers.expect();
  }
  answers.add("1\n2\n3\n");
  EXPECT_EQ(answers.take(), "3");
}

TEST(Answers, toNothingAreKeptForNobody) {
  Answers answers;
  answers.add("unasked\n");
  EXPECT_EQ(answers.take(), std::nullopt);
}

} // namespace

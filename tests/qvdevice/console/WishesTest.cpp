// What people at several pages want, and the one who does it.
#include "Wishes.h"

#include <atomic>
#include <set>
#include <thread>
#include <vector>

#include <poll.h>

#include <gtest/gtest.h>

namespace {

using namespace std::chrono_literals;
using qvdevice::Event;
using qvdevice::Reply;
using qvdevice::Wishes;
using Kind = Wishes::Kind;

Wishes::Wish wish(const std::string& name) {
  Event event{};
  event.name = name;
  return {Kind::kEvent, event};
}

bool readable(const Wishes& wishes) {
  pollfd ready{wishes.descriptor(), POLLIN, 0};
  return poll(&ready, 1, 0) == 1;
}

void awaitOne(const Wishes& wishes) {
  while (!wishes.waiting()) {
    std::this_thread::sleep_for(1ms);
  }
}

TEST(Wishes, wakeTheRunnerAndBringBackWhatItAnswers) {
  Wishes wishes;
  EXPECT_FALSE(readable(wishes));
  EXPECT_FALSE(wishes.take().has_value());
  Reply reply;
  std::thread page([&] { reply = wishes.ask(wish("copy"), 60s); });
  awaitOne(wishes);
  EXPECT_TRUE(readable(wishes));
  wishes.heard();
  EXPECT_FALSE(readable(wishes));
  const auto taken = wishes.take();
  ASSERT_TRUE(taken.has_value());
  EXPECT_EQ(taken->event->name, "copy");
  wishes.answer({409, "no"});
  page.join();
  EXPECT_EQ(reply.status, 409);
  EXPECT_EQ(reply.refusal, "no");
}

TEST(Wishes, ofManyPagesAreEachDoneOnceAndAnsweredToTheOneWhoAsked) {
  Wishes wishes;
  constexpr int kPages = 20;
  std::vector<std::thread> pages;
  std::atomic<int> right = 0;
  for (int i = 0; i < kPages; ++i) {
    pages.emplace_back([&, name = std::to_string(i)] { right += wishes.ask(wish(name), 60s).refusal == name ? 1 : 0; });
  }
  std::set<std::string> done;
  while (done.size() < kPages) {
    if (const auto taken = wishes.take()) {
      EXPECT_TRUE(done.insert(taken->event->name).second) << taken->event->name;
      wishes.answer({200, taken->event->name});
    }
  }
  for (std::thread& page : pages) {
    page.join();
  }
  EXPECT_EQ(right, kPages);
  EXPECT_FALSE(wishes.waiting());
}

TEST(Wishes, thatNobodyBeganInTimeAreNotDoneAnyMore) {
  Wishes wishes;
  const Reply reply = wishes.ask(wish("late"), 10ms);
  EXPECT_EQ(reply.status, 504);
  EXPECT_EQ(reply.refusal, "it was not done in time");
  EXPECT_FALSE(wishes.take().has_value());
}

TEST(Wishes, thatWereBegunAreAnsweredInVainAfterTheTime) {
  Wishes wishes;
  Reply reply;
  std::thread page([&] { reply = wishes.ask(wish("slow"), 50ms); });
  awaitOne(wishes);
  EXPECT_TRUE(wishes.take().has_value());
  page.join();
  EXPECT_EQ(reply.status, 504);
  wishes.answer({});
  EXPECT_FALSE(wishes.waiting());
}

TEST(Wishes, areRefusedWhenThereAreTooMany) {
  Wishes wishes;
  std::vector<std::thread> pages;
  for (int i = 0; i < 64; ++i) {
    pages.emplace_back([&wishes] { wishes.ask(wish("one of many"), 60s); });
  }
  Reply reply;
  for (int tries = 0; tries < 1000 && reply.status != 503; ++tries) {
    reply = wishes.ask(wish("one too many"), 1ms);
  }
  EXPECT_EQ(reply.status, 503);
  EXPECT_EQ(reply.refusal, "too much is wanted at once");
  wishes.close({410, "over"});
  for (std::thread& page : pages) {
    page.join();
  }
}

TEST(Wishes, forTheEndAreNeverTakenAndHoldBackTheOthers) {
  // A runner that has asked whether the end is wanted takes the next wish a moment later: one for the end that came
  // in between must not be taken for something else.
  Wishes wishes;
  EXPECT_FALSE(wishes.wantsEnd());
  wishes.look();
  Reply reply{0, ""};
  std::thread page([&] { reply = wishes.ask({Kind::kQuit, {}}, 60s); });
  while (!wishes.wantsEnd()) {
    std::this_thread::sleep_for(1ms);
  }
  EXPECT_FALSE(wishes.take().has_value());
  EXPECT_TRUE(wishes.waiting());
  EXPECT_TRUE(wishes.wantsEnd()) << "still";
  wishes.close({410, "over"});
  page.join();
  EXPECT_EQ(reply.status, 200);
  EXPECT_FALSE(wishes.wantsEnd());
  EXPECT_EQ(wishes.ask({Kind::kQuit, {}}, 60s).status, 200) << "it has ended";
}

TEST(Wishes, forTheEndThatNobodyHeardInTimeHoldBackNothing) {
  Wishes wishes;
  EXPECT_EQ(wishes.ask({Kind::kQuit, {}}, 10ms).status, 504);
  wishes.look();
  EXPECT_FALSE(wishes.wantsEnd());
  ASSERT_TRUE(wishes.take().has_value());
}

TEST(Wishes, toLookAreOneHoweverManyPagesWantIt) {
  Wishes wishes;
  wishes.look();
  wishes.look();
  EXPECT_TRUE(readable(wishes));
  EXPECT_EQ(wishes.take()->kind, Kind::kLook);
  EXPECT_FALSE(wishes.take().has_value());
  wishes.look();
  EXPECT_EQ(wishes.take()->kind, Kind::kLook);
}

TEST(Wishes, thatAreClosedAnswerWhoWaitsAndWhoComesLater) {
  Wishes wishes;
  Reply taken;
  Reply waiting;
  std::thread first([&] { taken = wishes.ask(wish("taken"), 60s); });
  awaitOne(wishes);
  EXPECT_TRUE(wishes.take().has_value());
  std::thread second([&] { waiting = wishes.ask(wish("waiting"), 60s); });
  awaitOne(wishes);
  wishes.close({410, "over"});
  first.join();
  second.join();
  EXPECT_EQ(taken.refusal, "over");
  EXPECT_EQ(waiting.refusal, "over");
  EXPECT_EQ(wishes.ask(wish("late"), 60s).status, 410);
  EXPECT_FALSE(wishes.waiting());
}

} // namespace

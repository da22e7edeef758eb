// What a page is told, early or late.
#include "Feed.h"

#include <thread>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using namespace std::chrono_literals;
using qvdevice::Feed;
using testing::ElementsAre;
using testing::IsEmpty;
using Json = nlohmann::ordered_json;

Json record(int n) { return {{"kind", "log"}, {"n", n}}; }

std::vector<std::string> texts(const std::vector<Feed::Entry>& entries) {
  std::vector<std::string> all;
  for (const Feed::Entry& entry : entries) {
    all.push_back(entry.text);
  }
  return all;
}

TEST(Feed, givesALatePageAllThatCameBefore) {
  Feed feed;
  feed.add(record(1));
  feed.add(record(2));
  const auto entries = feed.after(0, 0ms);
  EXPECT_THAT(texts(entries), ElementsAre(R"({"kind":"log","n":1})", R"({"kind":"log","n":2})"));
  EXPECT_LT(entries[0].number, entries[1].number);
}

TEST(Feed, givesAPageThatComesAgainWhatItMissed) {
  Feed feed;
  feed.add(record(1));
  const auto number = feed.after(0, 0ms).back().number;
  feed.add(record(2));
  feed.add(record(3));
  EXPECT_THAT(texts(feed.after(number, 0ms)), ElementsAre(R"({"kind":"log","n":2})", R"({"kind":"log","n":3})"));
}

TEST(Feed, waitsForWhatComesAndNoLongerThanItMay) {
  Feed feed;
  EXPECT_THAT(feed.after(0, 10ms), IsEmpty());
  std::thread later([&feed] {
    std::this_thread::sleep_for(20ms);
    feed.add(record(1));
  });
  EXPECT_THAT(texts(feed.after(0, 60s)), ElementsAre(R"({"kind":"log","n":1})"));
  later.join();
}

TEST(Feed, wakesEveryPageThatWaits) {
  Feed feed;
  std::vector<std::thread> pages;
  std::array<std::size_t, 4> got{};
  for (std::size_t& each : got) {
    pages.emplace_back([&feed, &each] { each = feed.after(0, 60s).size(); });
  }
  feed.add(record(1));
  for (std::thread& page : pages) {
    page.join();
  }
  EXPECT_THAT(got, testing::Each(1u));
}

TEST(Feed, keepsTheNewestAndSaysHowManyItDoesNot) {
  Feed feed(3 * record(1).dump().size());
  for (int n = 1; n <= 5; ++n) {
    feed.add(record(n));
  }
  EXPECT_THAT(texts(feed.after(0, 0ms)), ElementsAre(R"({"kind":"missed","records":2})", R"({"kind":"log","n":3})",
                                                     R"({"kind":"log","n":4})", R"({"kind":"log","n":5})"));
}

TEST(Feed, tellsAPageThatWasAwayTooLongThatSomethingIsMissing) {
  Feed feed(2 * record(1).dump().size());
  feed.add(record(1));
  const auto number = feed.after(0, 0ms).back().number;
  feed.add(record(2));
  feed.add(record(3));
  EXPECT_THAT(texts(feed.after(number, 0ms)), ElementsAre(R"({"kind":"log","n":2})", R"({"kind":"log","n":3})"));
  feed.add(record(4));
  EXPECT_THAT(texts(feed.after(number, 0ms)),
              ElementsAre(R"({"kind":"missed"})", R"({"kind":"log","n":3})", R"({"kind":"log","n":4})"));
}

TEST(Feed, tellsNobodyTwiceWhatIsMissing) {
  Feed feed(2 * record(1).dump().size());
  for (int n = 1; n <= 5; ++n) {
    feed.add(record(n));
  }
  const auto first = feed.after(0, 0ms);
  EXPECT_THAT(feed.after(first.front().number, 0ms).size(), first.size() - 1);
  EXPECT_THAT(feed.after(first.back().number, 0ms), IsEmpty());
}

TEST(Feed, keepsOfAStateTheNewestHoweverMuchCameSince) {
  Feed feed(2 * record(1).dump().size());
  feed.state({{"kind", "status"}, {"is", "old"}});
  feed.state({{"kind", "status"}, {"is", "new"}});
  feed.state({{"kind", "files"}});
  for (int n = 1; n <= 9; ++n) {
    feed.add(record(n));
  }
  EXPECT_THAT(texts(feed.after(0, 0ms)),
              ElementsAre(R"({"kind":"status","is":"new"})", R"({"kind":"files"})", R"({"kind":"missed","records":7})",
                          R"({"kind":"log","n":8})", R"({"kind":"log","n":9})"));
}

TEST(Feed, tellsNobodyOfAStateThatStayedTheSame) {
  Feed feed;
  feed.state({{"kind", "status"}, {"is", "old"}});
  const auto number = feed.after(0, 0ms).back().number;
  feed.state({{"kind", "status"}, {"is", "old"}});
  EXPECT_THAT(feed.after(number, 0ms), IsEmpty());
  feed.state({{"kind", "status"}, {"is", "new"}});
  EXPECT_THAT(texts(feed.after(number, 0ms)), ElementsAre(R"({"kind":"status","is":"new"})"));
}

TEST(Feed, givesAllToAPageWithANumberThatItNeverGave) {
  Feed feed;
  feed.add(record(1));
  EXPECT_THAT(texts(feed.after(1'000'000, 0ms)), ElementsAre(R"({"kind":"log","n":1})"));
}

TEST(Feed, replacesWhatIsNotUtf8) {
  Feed feed;
  feed.add({{"kind", "output"}, {"text", "a\xff"}});
  EXPECT_THAT(texts(feed.after(0, 0ms)), ElementsAre("{\"kind\":\"output\",\"text\":\"a\xef\xbf\xbd\"}"));
}

TEST(Feed, thatIsClosedLetsNobodyWaitAndStillGivesWhatItHas) {
  Feed feed;
  std::thread later([&feed] {
    std::this_thread::sleep_for(20ms);
    feed.close();
  });
  EXPECT_THAT(feed.after(0, 60s), IsEmpty());
  later.join();
  EXPECT_TRUE(feed.closed());
  feed.add(record(1));
  EXPECT_THAT(feed.after(0, 60s).size(), 1u);
}

} // namespace

// The console's server, as a browser, another site's page and a stranger come to it.
#include "Server.h"

#include <atomic>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>

#include <httplib.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Failure.h"

namespace {

using namespace std::chrono_literals;
using namespace qvdevice;
using testing::StartsWith;

class ServerTest : public testing::Test {
protected:
  ServerTest() {
    const std::string address = server_->address();
    const std::size_t slash = address.find('/', 7);
    origin_ = address.substr(0, slash);
    base_ = address.substr(slash);
    port_ = std::stoi(origin_.substr(origin_.rfind(':') + 1));
    client_.emplace("127.0.0.1", port_);
    runner_ = std::thread([this] {
      while (!over_) {
        if (const auto wish = wishes_.take()) {
          wishes_.answer(wish->event ? Reply{409, "not " + wish->event->name} : Reply{});
        } else {
          std::this_thread::sleep_for(1ms);
        }
      }
    });
  }
  ~ServerTest() override {
    client_.reset();
    server_.reset();
    over_ = true;
    runner_.join();
  }

  httplib::Result post(const std::string& path, const std::string& body, const std::string& origin,
                       const char* type = "application/json") {
    return client_->Post(base_ + path, {{"Origin", origin}}, body, type);
  }

  Feed feed_;
  Wishes wishes_;
  Picture picture_;
  std::unique_ptr<Server> server_ = std::make_unique<Server>(feed_, wishes_, picture_, 0, 60s);
  std::string origin_;
  std::string base_;
  int port_ = 0;
  std::optional<httplib::Client> client_;
  std::atomic<bool> over_ = false;
  std::thread runner_;
};

TEST_F(ServerTest, servesThePageToWhoKnowsTheToken) {
  const auto answer = client_->Get(base_);
  ASSERT_TRUE(answer);
  EXPECT_EQ(answer->status, 200);
  EXPECT_THAT(answer->body, StartsWith("<!doctype html>"));
  EXPECT_EQ(answer->get_header_value("Content-Type"), "text/html; charset=utf-8");
  EXPECT_EQ(client_->Get(base_ + "app.js")->get_header_value("Content-Type"), "text/javascript; charset=utf-8");
  EXPECT_EQ(client_->Get(base_ + "style.css")->get_header_value("Content-Type"), "text/css; charset=utf-8");
}

TEST_F(ServerTest, letsNoOtherPageTakePartAndNothingBeKept) {
  const auto answer = client_->Get(base_);
  EXPECT_THAT(answer->get_header_value("Content-Security-Policy"), StartsWith("default-src 'self'; "));
  EXPECT_EQ(answer->get_header_value("Cache-Control"), "no-store");
  EXPECT_EQ(answer->get_header_value("Referrer-Policy"), "no-referrer");
  EXPECT_EQ(answer->get_header_value("X-Content-Type-Options"), "nosniff");
  EXPECT_FALSE(answer->has_header("Access-Control-Allow-Origin"));
}

TEST_F(ServerTest, showsNothingToWhoDoesNotKnowTheToken) {
  const auto missing = client_->Get("/");
  EXPECT_EQ(missing->status, 404);
  for (const std::string& path :
       {std::string("/index.html"), std::string("/00000000000000000000000000000000/"),
        base_.substr(0, base_.size() - 1), base_ + "../app.js", base_ + "no-such-file", "/x" + base_}) {
    const auto answer = client_->Get(path);
    EXPECT_EQ(answer->status, 404) << path;
    EXPECT_EQ(answer->body, missing->body) << "nothing tells the one from the other";
  }
}

TEST_F(ServerTest, refusesAnotherHostsName) {
  for (const std::string& host :
       {std::string("evil.example"), "evil.example:" + std::to_string(port_), std::string()}) {
    EXPECT_EQ(client_->Get(base_, {{"Host", host}})->status, 403) << host;
  }
  EXPECT_EQ(client_->Get(base_, {{"Host", "localhost:" + std::to_string(port_)}})->status, 200);
}

TEST_F(ServerTest, refusesAWishFromAnotherSitesPage) {
  for (const char* origin : {"http://evil.example", "null", ""}) {
    const auto answer = post("quit", "{}", origin);
    EXPECT_EQ(answer->status, 403) << origin;
    EXPECT_EQ(answer->body, R"({"error":"the request comes from somewhere else"})");
  }
  EXPECT_EQ(client_->Post(base_ + "quit", "{}", "application/json")->status, 403) << "without an origin";
}

TEST_F(ServerTest, refusesWhatAFormCanSend) { EXPECT_EQ(post("quit", "{}", origin_, "text/plain")->status, 415); }

TEST_F(ServerTest, passesAWishOnAndBringsTheReply) {
  const auto done = post("relaunch", "{}", origin_);
  EXPECT_EQ(done->status, 200);
  EXPECT_EQ(done->body, R"({"ok":true})");
  const auto refused = post("events", R"({"event":"menu"})", origin_);
  EXPECT_EQ(refused->status, 409);
  EXPECT_EQ(refused->body, R"({"error":"not menu"})");
}

TEST_F(ServerTest, refusesAMalformedWishWithTheSentence) {
  const auto typo = post("events", R"({"event":"mneu"})", origin_);
  EXPECT_EQ(typo->status, 400);
  EXPECT_EQ(typo->body, R"({"error":"column 1: there is no event \"mneu\"; did you mean \"menu\"?"})");
  EXPECT_EQ(post("events", "{", origin_)->status, 400);
  EXPECT_EQ(post("events", "\xff", origin_)->status, 400);
}

TEST_F(ServerTest, refusesWhatIsTooLong) {
  const auto answer = post("events", R"({"event":"type )" + std::string(70'000, 'a') + "\"}", origin_);
  EXPECT_EQ(answer->status, 413);
  EXPECT_EQ(client_->Get(base_ + std::string(9'000, 'a'))->status, 414);
}

TEST_F(ServerTest, refusesOtherMethods) {
  EXPECT_EQ(client_->Post(base_, {{"Origin", origin_}}, "{}", "application/json")->status, 405);
  EXPECT_EQ(client_->Delete(base_)->status, 405);
  EXPECT_EQ(client_->Options(base_ + "events")->status, 405);
}

TEST_F(ServerTest, hasAPictureOnceOneWasTaken) {
  EXPECT_EQ(client_->Get(base_ + "screen.png")->status, 404);
  picture_.take("\x89PNG");
  const auto answer = client_->Get(base_ + "screen.png");
  EXPECT_EQ(answer->body, "\x89PNG");
  EXPECT_EQ(answer->get_header_value("Content-Type"), "image/png");
}

/// A page that stays open until the server ends, and what it is told.
class OpenPage {
public:
  OpenPage(int port, const std::string& path)
      : thread_([this, port, path] {
          httplib::Client client("127.0.0.1", port);
          client.set_read_timeout(20s);
          client.Get(path, [this](const char* data, std::size_t length) {
            const std::lock_guard locked(lock_);
            text_.append(data, length);
            grown_.notify_all();
            return true;
          });
        }) {}

  /// Waits until it was told this.
  void await(const std::string& part) {
    std::unique_lock locked(lock_);
    grown_.wait_for(locked, 60s, [&] { return text_.find(part) != std::string::npos; });
  }

  /// All that it was told, without heartbeats; the server is to have ended.
  const std::string& text() {
    static const std::string kHeartbeat = ":\n\n";
    thread_.join();
    for (std::size_t at = 0; (at = text_.find(kHeartbeat)) != std::string::npos;) {
      text_.erase(at, kHeartbeat.size());
    }
    return text_;
  }

private:
  std::mutex lock_;
  std::condition_variable grown_;
  std::string text_;
  std::jthread thread_;
};

TEST_F(ServerTest, streamsTheRecordsToEachPageWithTheirNumbers) {
  const std::string first = "id: 1\ndata: {\"kind\":\"log\",\"n\":1}\n\n";
  const std::string second = "id: 2\ndata: {\"kind\":\"log\",\"n\":2}\n\n";
  const std::string last = "id: 3\ndata: {\"kind\":\"end\"}\n\n";
  feed_.add({{"kind", "log"}, {"n", 1}});
  OpenPage early(port_, base_ + "records?after=0");
  OpenPage late(port_, base_ + "records?after=1");
  early.await(first);
  feed_.add({{"kind", "log"}, {"n", 2}});
  early.await(second);
  late.await(second);
  feed_.add({{"kind", "end"}});
  server_.reset();
  EXPECT_EQ(early.text(), first + second + last) << "also what came just before the end";
  EXPECT_EQ(late.text(), second + last);
}

TEST_F(ServerTest, takesANumberThatIsNoneAsTheBeginning) {
  const std::string first = "id: 1\ndata: {\"kind\":\"log\"}\n\n";
  feed_.add({{"kind", "log"}});
  OpenPage page(port_, base_ + "records?after=-1x");
  page.await(first);
  server_.reset();
  EXPECT_EQ(page.text(), first);
}

TEST_F(ServerTest, refusesOnePageTooManyAndStillAnswersTheOthers) {
  std::deque<OpenPage> pages;
  for (int i = 0; i < 16; ++i) {
    pages.emplace_back(port_, base_ + "records");
  }
  httplib::Client another("127.0.0.1", port_);
  int status = 0;
  for (int tries = 0; tries < 500 && status != 503; ++tries) {
    another.Get(
        base_ + "records", httplib::Headers{},
        [&status](const httplib::Response& response) {
          status = response.status;
          return false;
        },
        [](const char*, std::size_t) { return false; });
    std::this_thread::sleep_for(10ms);
  }
  EXPECT_EQ(status, 503);
  EXPECT_EQ(client_->Get(base_)->status, 200);
  EXPECT_EQ(post("relaunch", "{}", origin_)->status, 200);
  server_.reset();
}

TEST(Server, refusesAPortThatIsTaken) {
  Feed feed;
  Wishes wishes;
  const Picture picture;
  const Server first(feed, wishes, picture, 0, 1s);
  const std::string address = first.address();
  const int port = std::stoi(address.substr(17));
  try {
    const Server second(feed, wishes, picture, port, 1s);
    FAIL() << "two servers on one port";
  } catch (const Failure& failure) {
    EXPECT_EQ(failure.status(), kCannotStart);
    EXPECT_EQ(std::string(failure.what()),
              "the console cannot listen on port " + std::to_string(port) + " of 127.0.0.1: Address already in use");
  }
}

} // namespace

#include "Server.h"

#include <atomic>
#include <cerrno>
#include <charconv>
#include <cstring>
#include <thread>

#include <httplib.h>

#include "Access.h"
#include "Asset.h"
#include "Failure.h"
#include "WishText.h"

namespace qvdevice {

using Json = nlohmann::ordered_json;
using namespace std::chrono_literals;

/// Pages that may be open at a time; each takes a thread for as long as it is.
static constexpr int kMostPages = 16;
static constexpr std::size_t kThreads = 32;
static constexpr std::size_t kLongestBody = 65536;
static constexpr auto kHeartbeat = 1s;

static void answer(httplib::Response& response, const Reply& reply) {
  response.status = reply.status;
  const Json body = reply.refusal.empty() ? Json{{"ok", true}} : Json{{"error", reply.refusal}};
  response.set_content(body.dump(-1, ' ', false, Json::error_handler_t::replace), "application/json");
}

/// The library would let several processes listen on one port.
static void takePortAlone(socket_t socket) {
  const int yes = 1;
  setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
}

class Server::Connections {
public:
  Connections(Feed& feed, Wishes& wishes, const Picture& picture, int port, std::chrono::milliseconds limit)
      : feed_(feed), wishes_(wishes), picture_(picture), limit_(limit), access_(listenOn(port)) {
    http_.set_payload_max_length(kLongestBody);
    http_.set_keep_alive_timeout(1);
    http_.set_keep_alive_max_count(1000);
    http_.set_tcp_nodelay(true);
    http_.new_task_queue = [] { return new httplib::ThreadPool(kThreads); };
    http_.set_default_headers(
        {{"Cache-Control", "no-store"},
         {"Content-Security-Policy",
          "default-src 'self'; base-uri 'none'; form-action 'none'; frame-ancestors 'none'; object-src 'none'"},
         {"Cross-Origin-Opener-Policy", "same-origin"},
         {"Cross-Origin-Resource-Policy", "same-origin"},
         {"Referrer-Policy", "no-referrer"},
         {"X-Content-Type-Options", "nosniff"}});
    http_.set_pre_routing_handler([this](const httplib::Request& request, httplib::Response& response) {
      return route(request, response) ? httplib::Server::HandlerResponse::Handled
                                      : httplib::Server::HandlerResponse::Unhandled;
    });
    // Whatever comes here has passed `route`, with a path that is one of ours.
    http_.Post(".*", [this](const httplib::Request& request, httplib::Response& response) { post(request, response); });
    http_.set_error_handler([](const httplib::Request&, httplib::Response& response) {
      if (response.body.empty()) {
        answer(response, {response.status, "that cannot be done"});
      }
    });
    http_.set_exception_handler([](const httplib::Request&, httplib::Response& response, const std::exception_ptr&) {
      answer(response, {500, "something went wrong in the console itself"});
    });
    thread_ = std::thread([this] {
      http_.listen_after_bind();
      gone_ = true;
    });
    while (!http_.is_running() && !gone_) {
      std::this_thread::sleep_for(1ms);
    }
  }

  ~Connections() {
    feed_.close();
    wishes_.close({410, "the console has ended"});
    for (auto waited = 0ms; pages_ > 0 && waited < 2s; waited += 10ms) {
      std::this_thread::sleep_for(10ms);
    }
    http_.stop();
    thread_.join();
  }
  Connections(const Connections&) = delete;
  Connections& operator=(const Connections&) = delete;

  std::string address() const { return access_.address(); }

private:
  int bind(int port) {
    http_.set_socket_options(takePortAlone);
    if (port == 0) {
      return http_.bind_to_any_port("127.0.0.1");
    }
    return http_.bind_to_port("127.0.0.1", port) ? port : -1;
  }

  Access listenOn(int port) {
    const int bound = bind(port);
    if (bound <= 0) {
      throw Failure(kCannotStart, "the console cannot listen on " +
                                      (port == 0 ? "any port" : "port " + std::to_string(port)) +
                                      " of 127.0.0.1: " + std::strerror(errno));
    }
    return {makeToken(), bound};
  }

  /// Answers all that must be refused and all that is only read; false for the rest.
  bool route(const httplib::Request& request, httplib::Response& response) {
    if (!access_.isOurHost(request.get_header_value("Host"))) {
      answer(response, {403, "this is not the host's name"});
      return true;
    }
    const std::string path(access_.behindToken(request.path));
    if (path.empty()) {
      answer(response, {404, "there is nothing here"});
      return true;
    }
    if (request.method == "POST" && isWish(path)) {
      return refuse(request, response);
    }
    if (request.method == "GET" || request.method == "HEAD") {
      return get(path, request, response);
    }
    answer(response, {405, "that cannot be done here"});
    return true;
  }

  /// Whether it has refused what another site's page could send.
  bool refuse(const httplib::Request& request, httplib::Response& response) const {
    if (!access_.isOurOrigin(request.get_header_value("Origin"))) {
      answer(response, {403, "the request comes from somewhere else"});
      return true;
    }
    if (request.get_header_value("Content-Type") != "application/json") {
      answer(response, {415, "the body must be application/json"});
      return true;
    }
    return false;
  }

  bool get(const std::string& path, const httplib::Request& request, httplib::Response& response) {
    if (path == "/records") {
      stream(request, response);
    } else if (path == "/screen.png") {
      if (const auto png = picture_.png()) {
        response.set_content(*png, "image/png");
      } else {
        answer(response, {404, "there is no picture yet"});
      }
    } else if (const Asset* const asset = assetAt(path)) {
      response.set_content(asset->content.data(), asset->content.size(), asset->type);
    } else {
      answer(response, {404, "there is nothing here"});
    }
    return true;
  }

  void post(const httplib::Request& request, httplib::Response& response) {
    try {
      const Wishes::Wish wish = wishIn(std::string(access_.behindToken(request.path)), request.body);
      answer(response, wishes_.ask(wish, limit_));
    } catch (const Failure& failure) {
      answer(response, {400, failure.what()});
    }
  }

  void stream(const httplib::Request& request, httplib::Response& response) {
    if (++pages_ > kMostPages) {
      --pages_;
      answer(response, {503, "too many pages are open"});
      return;
    }
    wishes_.look();
    response.set_chunked_content_provider(
        "text/event-stream",
        [this, last = numberIn(request.get_param_value("after"))](std::size_t, httplib::DataSink& sink) mutable {
          return pass(last, sink);
        },
        [this](bool) { --pages_; });
  }

  bool pass(std::uint64_t& last, httplib::DataSink& sink) {
    const bool over = feed_.closed();
    std::string text;
    for (const Feed::Entry& entry : feed_.after(last, kHeartbeat)) {
      last = entry.number;
      text += "id: " + std::to_string(last) + "\ndata: " + entry.text + "\n\n";
    }
    if (text.empty() && over) {
      sink.done();
      return true;
    }
    // A page that has gone is noticed when it is written to.
    const std::string& written = text.empty() ? kHeartbeatText : text;
    return sink.write(written.data(), written.size());
  }

  static std::uint64_t numberIn(const std::string& text) {
    std::uint64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size() ? number : 0;
  }

  static inline const std::string kHeartbeatText = ":\n\n";

  Feed& feed_;
  Wishes& wishes_;
  const Picture& picture_;
  std::chrono::milliseconds limit_;
  httplib::Server http_;
  Access access_;
  std::atomic<int> pages_ = 0;
  std::atomic<bool> gone_ = false;
  std::thread thread_;
};

Server::Server(Feed& feed, Wishes& wishes, const Picture& picture, int port, std::chrono::milliseconds limit)
    : connections_(std::make_unique<Connections>(feed, wishes, picture, port, limit)) {}

Server::~Server() = default;

std::string Server::address() const { return connections_->address(); }

} // namespace qvdevice

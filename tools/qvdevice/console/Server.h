#pragma once

#include <chrono>
#include <memory>
#include <string>

#include "Feed.h"
#include "Picture.h"
#include "Wishes.h"

namespace qvdevice {

/// Serves the pages of a console on 127.0.0.1, to whoever knows the address. It has threads of its own, from the
/// construction to the end of the object.
///
/// GET "": the page. GET "records?after=N": the feed from there on, as server-sent events. GET "screen.png": the
/// picture. POST "events",
/// {"event": a line as in an events file}; POST "relaunch" and "quit", {}: the reply is {"ok":true}, or {"error": why}
/// with a status that tells of it.
class Server {
public:
  /// `port` 0 lets the system choose; a wish is given up after `limit`. Throws Failure when the port is not to be had.
  Server(Feed& feed, Wishes& wishes, const Picture& picture, int port, std::chrono::milliseconds limit);
  /// Ends the pages' connections when they have all that is in the feed.
  ~Server();
  Server(const Server&) = delete;
  Server& operator=(const Server&) = delete;

  /// What a browser is given to open, token and all.
  std::string address() const;

private:
  class Connections;
  std::unique_ptr<Connections> connections_;
};

} // namespace qvdevice

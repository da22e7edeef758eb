#pragma once

#include <chrono>
#include <condition_variable>
#include <deque>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

#include "Events.h"

namespace qvdevice {

/// What became of a wish: a status as HTTP has them, and why it was not done.
struct Reply {
  int status = 200;
  std::string refusal;
};

/// What the people at the pages want of the one who runs the app. They wait for the reply on threads of their own; the
/// runner takes one wish after the other.
class Wishes {
public:
  enum class Kind {
    kEvent,    // something is done to the app
    kLook,     // somebody wants to see how it is; nobody waits for that
    kRelaunch, // the app is started again
    kQuit      // the console ends
  };

  struct Wish {
    Kind kind;
    std::optional<Event> event;
  };

  /// Throws std::system_error.
  Wishes();
  ~Wishes();
  Wishes(const Wishes&) = delete;
  Wishes& operator=(const Wishes&) = delete;

  /// Waits for the reply, up to `limit`; a wish that nobody has begun by then is not carried out any more. Any thread.
  Reply ask(Wish wish, std::chrono::milliseconds limit);
  /// Wants to see how the app is, without waiting. Any thread.
  void look();
  /// Nothing is taken any more; who waits gets `reply`, and who wanted the end has got it. Any thread.
  void close(const Reply& reply);

  /// For the runner, who alone calls what follows: readable when something has come. `heard` makes it unreadable.
  int descriptor() const { return descriptor_; }
  void heard() const;
  /// The oldest wish, which is to be answered before the next one is taken. None once somebody wants the end: that
  /// wish stays, for `wantsEnd` to tell of whenever it is looked at, and `close` answers it.
  std::optional<Wish> take();
  void answer(const Reply& reply);
  /// Whether there is one to take.
  bool waiting() const;
  /// Whether somebody wants the console to end.
  bool wantsEnd() const;

private:
  struct Asked {
    Wish wish;
    std::optional<Reply> reply;
    bool abandoned = false;
  };

  void wake() const;
  bool endIsWanted() const;
  static Reply closing(const Wish& wish, const Reply& reply);

  static constexpr std::size_t kMost = 64;

  int descriptor_;
  mutable std::mutex lock_;
  std::condition_variable answered_;
  std::deque<std::shared_ptr<Asked>> asked_;
  std::shared_ptr<Asked> current_;
  std::optional<Reply> closed_;
};

} // namespace qvdevice

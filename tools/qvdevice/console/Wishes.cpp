#include "Wishes.h"

#include <algorithm>
#include <cerrno>
#include <system_error>

#include <sys/eventfd.h>
#include <unistd.h>

namespace qvdevice {

Wishes::Wishes() : descriptor_(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {
  if (descriptor_ < 0) {
    throw std::system_error(errno, std::generic_category(), "eventfd");
  }
}

Wishes::~Wishes() { ::close(descriptor_); }

void Wishes::wake() const { eventfd_write(descriptor_, 1); }

void Wishes::heard() const {
  eventfd_t ignored = 0;
  eventfd_read(descriptor_, &ignored);
}

Reply Wishes::ask(Wish wish, std::chrono::milliseconds limit) {
  const auto asked = std::make_shared<Asked>(Asked{std::move(wish), {}});
  std::unique_lock locked(lock_);
  if (closed_) {
    return closing(asked->wish, *closed_);
  }
  if (asked_.size() >= kMost) {
    return {503, "too much is wanted at once"};
  }
  asked_.push_back(asked);
  wake();
  answered_.wait_for(locked, limit, [&] { return asked->reply.has_value(); });
  if (!asked->reply) {
    asked->abandoned = true;
    return {504, "it was not done in time"};
  }
  return *asked->reply;
}

void Wishes::look() {
  const std::lock_guard locked(lock_);
  const bool known =
      std::any_of(asked_.begin(), asked_.end(), [](const auto& asked) { return asked->wish.kind == Kind::kLook; });
  if (!closed_ && !known) {
    asked_.push_back(std::make_shared<Asked>(Asked{{Kind::kLook, {}}, {}}));
    wake();
  }
}

void Wishes::close(const Reply& reply) {
  const std::lock_guard locked(lock_);
  closed_ = reply;
  for (const auto& asked : asked_) {
    asked->reply = closing(asked->wish, reply);
  }
  if (current_) {
    current_->reply = reply;
  }
  asked_.clear();
  answered_.notify_all();
}

std::optional<Wishes::Wish> Wishes::take() {
  const std::lock_guard locked(lock_);
  while (!asked_.empty() && !endIsWanted()) {
    current_ = std::move(asked_.front());
    asked_.pop_front();
    if (!current_->abandoned) {
      return current_->wish;
    }
  }
  current_.reset();
  return std::nullopt;
}

void Wishes::answer(const Reply& reply) {
  const std::lock_guard locked(lock_);
  if (current_) {
    current_->reply = reply;
    current_.reset();
    answered_.notify_all();
  }
}

bool Wishes::waiting() const {
  const std::lock_guard locked(lock_);
  return !asked_.empty();
}

bool Wishes::wantsEnd() const {
  const std::lock_guard locked(lock_);
  return endIsWanted();
}

Reply Wishes::closing(const Wish& wish, const Reply& reply) { return wish.kind == Kind::kQuit ? Reply{} : reply; }

bool Wishes::endIsWanted() const {
  return std::any_of(asked_.begin(), asked_.end(),
                     [](const auto& asked) { return asked->wish.kind == Kind::kQuit && !asked->abandoned; });
}

} // namespace qvdevice

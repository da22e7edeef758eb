#include "Feed.h"

#include <algorithm>

namespace qvdevice {

using Json = nlohmann::ordered_json;

static std::string lineOf(const Json& record) { return record.dump(-1, ' ', false, Json::error_handler_t::replace); }

void Feed::add(const Json& record) {
  std::string text = lineOf(record);
  const std::lock_guard locked(lock_);
  append(std::move(text));
}

void Feed::state(const Json& record) {
  std::string text = lineOf(record);
  const std::lock_guard locked(lock_);
  const auto [known, first] = states_.try_emplace(record.value("kind", ""));
  if (!first && known->second.text == text) {
    return;
  }
  known->second = {++last_, std::move(text)};
  changed_.notify_all();
}

void Feed::append(std::string text) {
  bytes_ += text.size();
  entries_.push_back({++last_, std::move(text)});
  while (bytes_ > mostBytes_) {
    dropOldest();
  }
  changed_.notify_all();
}

void Feed::dropOldest() {
  bytes_ -= entries_.front().text.size();
  lastDropped_ = entries_.front().number;
  ++dropped_;
  entries_.pop_front();
}

std::vector<Feed::Entry> Feed::collect(std::uint64_t number) const {
  std::vector<Entry> found;
  if (number < lastDropped_) {
    // How many of them were missed is known to one who had none.
    Json missed{{"kind", "missed"}};
    if (number == 0) {
      missed["records"] = dropped_;
    }
    found.push_back({lastDropped_, missed.dump()});
  }
  const auto newer = [number](const Entry& entry) { return entry.number > number; };
  std::copy_if(entries_.begin(), entries_.end(), std::back_inserter(found), newer);
  for (const auto& [kind, entry] : states_) {
    if (newer(entry)) {
      found.push_back(entry);
    }
  }
  std::sort(found.begin(), found.end(), [](const Entry& a, const Entry& b) { return a.number < b.number; });
  return found;
}

std::vector<Feed::Entry> Feed::after(std::uint64_t number, std::chrono::milliseconds limit) {
  std::unique_lock locked(lock_);
  if (number > last_) {
    number = 0; // of another feed
  }
  changed_.wait_for(locked, limit, [&] { return closed_ || last_ > number; });
  return collect(number);
}

void Feed::close() {
  const std::lock_guard locked(lock_);
  closed_ = true;
  changed_.notify_all();
}

bool Feed::closed() const {
  const std::lock_guard locked(lock_);
  return closed_;
}

} // namespace qvdevice

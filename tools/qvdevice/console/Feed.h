#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <list>
#include <map>
#include <mutex>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

namespace qvdevice {

/// What the open pages are told: records in their order, each with a number. A page that comes late or again gets what
/// it missed, as far as it is kept. Any thread.
class Feed {
public:
  struct Entry {
    std::uint64_t number;
    std::string text; // the record as JSON, on one line
  };

  static constexpr std::size_t kMostBytes = std::size_t{4} << 20;

  /// Keeps at most `mostBytes` of records, the newest.
  explicit Feed(std::size_t mostBytes = kMostBytes) : mostBytes_(mostBytes) {}

  void add(const nlohmann::ordered_json& record);
  /// A record that tells how something is now: it is kept until the next one of its kind, and not added when it is the
  /// same as the one before.
  void state(const nlohmann::ordered_json& record);

  /// What came after `number`, 0 for all; waits for it up to `limit`. What is not kept any more is told by a record
  /// {"kind":"missed","records":n} in its place. Empty when nothing came, or the feed is closed.
  std::vector<Entry> after(std::uint64_t number, std::chrono::milliseconds limit);

  /// Nobody waits from now on.
  void close();
  bool closed() const;

private:
  using Entries = std::list<Entry>;

  void append(std::string text);
  void dropOldest();
  std::vector<Entry> collect(std::uint64_t number) const;

  mutable std::mutex lock_;
  std::condition_variable changed_;
  std::size_t mostBytes_;
  std::size_t bytes_ = 0;
  std::uint64_t last_ = 0;
  std::uint64_t dropped_ = 0;     // how many are not kept any more
  std::uint64_t lastDropped_ = 0; // the number of the newest of these
  Entries entries_;
  std::map<std::string, Entry> states_; // by kind
  bool closed_ = false;
};

} // namespace qvdevice

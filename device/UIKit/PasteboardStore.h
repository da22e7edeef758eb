// Where pasteboards keep their items: a database that all apps of a device share, or one of the process's own.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace qvdevice {

class PasteboardDatabase;

/// One item: its types, each with its value as bytes.
using PasteboardItem = std::vector<std::pair<std::string, std::string>>;

/// What can be said of a pasteboard without reading its values.
struct PasteboardSummary {
  /// How often its contents have changed.
  std::int64_t changeCount = 0;
  /// The types of all its items.
  std::set<std::string> types;
};

struct PasteboardChange {
  PasteboardSummary before;
  PasteboardSummary after;
};

/// Any thread. A write is seen by all processes as a whole or not at all, and none is lost. A database that cannot be
/// used is left as it is: `refused` is told in a sentence, and whoever asked finds an empty pasteboard.
class PasteboardStore {
public:
  using Refused = std::function<void(const std::string& sentence)>;

  /// The database in the file at `path`, which is made when it is first needed; without a path, one in memory.
  PasteboardStore(std::string path, Refused refused);
  ~PasteboardStore();
  PasteboardStore(const PasteboardStore&) = delete;
  PasteboardStore& operator=(const PasteboardStore&) = delete;

  PasteboardSummary summary(const std::string& pasteboard);
  std::vector<PasteboardItem> items(const std::string& pasteboard);

  /// Both answer whether the pasteboard has changed, and how.
  bool replaceItems(const std::string& pasteboard, const std::vector<PasteboardItem>& items, PasteboardChange& change);
  bool addItems(const std::string& pasteboard, const std::vector<PasteboardItem>& items, PasteboardChange& change);

  /// Forgets the pasteboard and what it holds.
  void remove(const std::string& pasteboard);

  /// Tells of contents that were read and make no sense.
  void refuseContents(const std::string& pasteboard);

private:
  template <class Work> bool use(Work work);
  bool write(const std::string& pasteboard, const std::vector<PasteboardItem>& items, bool keep,
             PasteboardChange& change);

  const std::string path_;
  const Refused refused_;
  std::mutex lock_;
  std::unique_ptr<PasteboardDatabase> database_;
  std::string lastRefusal_;
};

} // namespace qvdevice

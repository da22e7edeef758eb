#include "UIKit/PasteboardStore.h"

#include "UIKit/PasteboardDatabase.h"

namespace qvdevice {

PasteboardStore::PasteboardStore(std::string path, Refused refused)
    : path_(std::move(path)), refused_(std::move(refused)) {}

PasteboardStore::~PasteboardStore() = default;

/// Whether `work` could be done.
template <class Work> bool PasteboardStore::use(Work work) {
  std::string sentence;
  {
    const std::lock_guard locked(lock_);
    try {
      if (!database_) database_ = std::make_unique<PasteboardDatabase>(path_);
      work(*database_);
      lastRefusal_.clear();
      return true;
    } catch (const PasteboardFailure& failure) {
      // What is half done is undone. Whoever mends a file need not start the app again: it is opened anew.
      if (!path_.empty())
        database_.reset();
      else if (database_)
        database_->rollBack();
      sentence = "the device's pasteboard \"" + path_ + "\" cannot be used: " + failure.what() +
                 "; it counts as empty and takes nothing until that is mended or the file removed";
    }
    if (sentence == lastRefusal_) return false;
    lastRefusal_ = sentence;
  }
  refused_(sentence);
  return false;
}

PasteboardSummary PasteboardStore::summary(const std::string& pasteboard) {
  PasteboardSummary found;
  use([&](PasteboardDatabase& database) {
    database.begin(false);
    found = database.summary(pasteboard);
    database.commit();
  });
  return found;
}

std::vector<PasteboardItem> PasteboardStore::items(const std::string& pasteboard) {
  std::vector<PasteboardItem> found;
  const bool read = use([&](PasteboardDatabase& database) { found = database.items(pasteboard); });
  return read ? found : std::vector<PasteboardItem>();
}

bool PasteboardStore::replaceItems(const std::string& pasteboard, const std::vector<PasteboardItem>& items,
                                   PasteboardChange& change) {
  return write(pasteboard, items, false, change);
}

bool PasteboardStore::addItems(const std::string& pasteboard, const std::vector<PasteboardItem>& items,
                               PasteboardChange& change) {
  return write(pasteboard, items, true, change);
}

bool PasteboardStore::write(const std::string& pasteboard, const std::vector<PasteboardItem>& items, bool keep,
                            PasteboardChange& change) {
  return use([&](PasteboardDatabase& database) {
    database.begin(true);
    change.before = database.summary(pasteboard);
    if (!keep) database.clear(pasteboard);
    database.append(pasteboard, items);
    database.countChange(pasteboard);
    change.after = database.summary(pasteboard);
    database.commit();
  });
}

void PasteboardStore::remove(const std::string& pasteboard) {
  use([&](PasteboardDatabase& database) {
    database.begin(true);
    database.forget(pasteboard);
    database.commit();
  });
}

void PasteboardStore::refuseContents(const std::string& pasteboard) {
  refused_("the device's pasteboard \"" + path_ + "\" holds items of \"" + pasteboard +
           "\" that make no sense; it counts as empty until it is written anew");
}

} // namespace qvdevice

// The pasteboards' tables. Every failure is a PasteboardFailure.
#pragma once

#include "UIKit/PasteboardStore.h"

#include <stdexcept>

struct sqlite3;
struct sqlite3_stmt;

namespace qvdevice {

class PasteboardFailure : public std::runtime_error {
public:
  using std::runtime_error::runtime_error;
};

class PasteboardDatabase {
public:
  explicit PasteboardDatabase(const std::string& path);
  ~PasteboardDatabase();
  PasteboardDatabase(const PasteboardDatabase&) = delete;
  PasteboardDatabase& operator=(const PasteboardDatabase&) = delete;

  /// What lies between the two is one whole. A transaction that writes has the database to itself from its beginning.
  void begin(bool writes);
  void commit();
  /// Never fails: there may be nothing to undo.
  void rollBack();

  PasteboardSummary summary(const std::string& pasteboard);
  std::vector<PasteboardItem> items(const std::string& pasteboard);
  void clear(const std::string& pasteboard);
  void append(const std::string& pasteboard, const std::vector<PasteboardItem>& items);
  void countChange(const std::string& pasteboard);
  void forget(const std::string& pasteboard);

private:
  void run(const char* statements);
  void makeTables();
  [[noreturn]] void fail() const;

  class Statement;
  sqlite3* database_ = nullptr;
};

} // namespace qvdevice

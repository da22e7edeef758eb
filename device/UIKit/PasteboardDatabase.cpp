#include "UIKit/PasteboardDatabase.h"

#include <sqlite3.h>

#include <string_view>

namespace qvdevice {

namespace {

/// Another app holds the database for the length of one write; one that holds it for so long has gone wrong.
constexpr int kPatienceInMilliseconds = 20000;

constexpr int kVersion = 1;

constexpr char kTables[] = "CREATE TABLE pasteboard (name TEXT PRIMARY KEY, changes INTEGER NOT NULL) WITHOUT ROWID;"
                           "CREATE TABLE item (id INTEGER PRIMARY KEY, pasteboard TEXT NOT NULL);"
                           "CREATE INDEX items ON item (pasteboard, id);"
                           "CREATE TABLE representation ("
                           " item INTEGER NOT NULL REFERENCES item ON DELETE CASCADE,"
                           " type TEXT NOT NULL, value BLOB NOT NULL, PRIMARY KEY (item, type)) WITHOUT ROWID;"
                           "PRAGMA user_version = 1";

} // namespace

/// A prepared statement.
class PasteboardDatabase::Statement {
public:
  Statement(PasteboardDatabase& database, const char* text) : database_(database) {
    if (sqlite3_prepare_v2(database.database_, text, -1, &statement_, nullptr) != SQLITE_OK) database.fail();
  }
  ~Statement() { sqlite3_finalize(statement_); }
  Statement(const Statement&) = delete;
  Statement& operator=(const Statement&) = delete;

  // What is bound is not copied: it must stay until the statement has run.
  Statement& bind(int index, std::string_view text) {
    return checked(sqlite3_bind_text64(statement_, index, text.data(), text.size(), SQLITE_STATIC, SQLITE_UTF8));
  }
  Statement& bindBytes(int index, std::string_view bytes) {
    // A null pointer would be no value at all.
    const void* const start = bytes.empty() ? "" : bytes.data();
    return checked(sqlite3_bind_blob64(statement_, index, start, bytes.size(), SQLITE_STATIC));
  }
  Statement& bind(int index, sqlite3_int64 number) { return checked(sqlite3_bind_int64(statement_, index, number)); }

  /// Whether there is another row.
  bool next() {
    const int result = sqlite3_step(statement_);
    if (result != SQLITE_ROW && result != SQLITE_DONE) database_.fail();
    return result == SQLITE_ROW;
  }
  void runOnce() {
    next();
    checked(sqlite3_reset(statement_));
  }

  bool isNull(int column) const { return sqlite3_column_type(statement_, column) == SQLITE_NULL; }
  sqlite3_int64 number(int column) const { return sqlite3_column_int64(statement_, column); }
  std::string bytes(int column) const {
    const void* const start = sqlite3_column_blob(statement_, column);
    const int length = sqlite3_column_bytes(statement_, column);
    return start ? std::string(static_cast<const char*>(start), static_cast<size_t>(length)) : std::string();
  }

private:
  Statement& checked(int result) {
    if (result != SQLITE_OK) database_.fail();
    return *this;
  }

  PasteboardDatabase& database_;
  sqlite3_stmt* statement_ = nullptr;
};

PasteboardDatabase::PasteboardDatabase(const std::string& path) {
  const int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE;
  try {
    if (sqlite3_open_v2(path.empty() ? ":memory:" : path.c_str(), &database_, flags, nullptr) != SQLITE_OK) fail();
    sqlite3_busy_timeout(database_, kPatienceInMilliseconds);
    // An app may be killed at any moment, which the journal covers; a machine that loses its power takes the pasteboard
    // with it, as a phone that is switched off does.
    run("PRAGMA synchronous = OFF; PRAGMA temp_store = MEMORY; PRAGMA foreign_keys = ON");
    makeTables();
  } catch (...) {
    sqlite3_close(database_);
    throw;
  }
}

PasteboardDatabase::~PasteboardDatabase() { sqlite3_close(database_); }

void PasteboardDatabase::fail() const { throw PasteboardFailure(sqlite3_errmsg(database_)); }

void PasteboardDatabase::run(const char* statements) {
  if (sqlite3_exec(database_, statements, nullptr, nullptr, nullptr) != SQLITE_OK) fail();
}

void PasteboardDatabase::makeTables() {
  const auto version = [this] {
    Statement question(*this, "PRAGMA user_version");
    return question.next() ? question.number(0) : 0;
  };
  if (version() == 0) {
    begin(true);
    // Another app may have been faster.
    if (version() == 0) run(kTables);
    commit();
  }
  if (version() != kVersion) throw PasteboardFailure("it was made by another release of the device");
}

void PasteboardDatabase::begin(bool writes) { run(writes ? "BEGIN IMMEDIATE" : "BEGIN"); }

void PasteboardDatabase::commit() { run("COMMIT"); }

void PasteboardDatabase::rollBack() { sqlite3_exec(database_, "ROLLBACK", nullptr, nullptr, nullptr); }

PasteboardSummary PasteboardDatabase::summary(const std::string& pasteboard) {
  PasteboardSummary found;
  Statement changes(*this, "SELECT changes FROM pasteboard WHERE name = ?1");
  changes.bind(1, pasteboard);
  if (changes.next()) found.changeCount = changes.number(0);
  Statement types(*this, "SELECT DISTINCT type FROM item JOIN representation ON representation.item = item.id "
                         "WHERE pasteboard = ?1");
  types.bind(1, pasteboard);
  while (types.next())
    found.types.insert(types.bytes(0));
  return found;
}

std::vector<PasteboardItem> PasteboardDatabase::items(const std::string& pasteboard) {
  std::vector<PasteboardItem> found;
  // An item need not have a type.
  Statement rows(*this,
                 "SELECT item.id, type, value FROM item LEFT JOIN representation ON representation.item = item.id "
                 "WHERE pasteboard = ?1 ORDER BY item.id");
  rows.bind(1, pasteboard);
  sqlite3_int64 last = -1;
  while (rows.next()) {
    if (found.empty() || rows.number(0) != last) found.emplace_back();
    last = rows.number(0);
    if (!rows.isNull(1)) found.back().emplace_back(rows.bytes(1), rows.bytes(2));
  }
  return found;
}

void PasteboardDatabase::clear(const std::string& pasteboard) {
  Statement(*this, "DELETE FROM item WHERE pasteboard = ?1").bind(1, pasteboard).runOnce();
}

void PasteboardDatabase::append(const std::string& pasteboard, const std::vector<PasteboardItem>& items) {
  Statement item(*this, "INSERT INTO item (pasteboard) VALUES (?1)");
  Statement representation(*this, "INSERT INTO representation VALUES (?1, ?2, ?3)");
  item.bind(1, pasteboard);
  for (const PasteboardItem& each : items) {
    item.runOnce();
    representation.bind(1, sqlite3_last_insert_rowid(database_));
    for (const auto& [type, value] : each)
      representation.bind(2, type).bindBytes(3, value).runOnce();
  }
}

void PasteboardDatabase::countChange(const std::string& pasteboard) {
  Statement(*this, "INSERT INTO pasteboard VALUES (?1, 1) ON CONFLICT (name) DO UPDATE SET changes = changes + 1")
      .bind(1, pasteboard)
      .runOnce();
}

void PasteboardDatabase::forget(const std::string& pasteboard) {
  clear(pasteboard);
  Statement(*this, "DELETE FROM pasteboard WHERE name = ?1").bind(1, pasteboard).runOnce();
}

} // namespace qvdevice

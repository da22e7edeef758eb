#include "Security/KeychainDatabase.h"

#include <sqlite3.h>

#include <cstdio>

namespace qvdevice {

namespace {

/// Another app holds the file for as long as one change takes.
constexpr int kPatienceInMilliseconds = 20000;

std::string quoted(std::string_view column) { return '"' + std::string(column) + '"'; }

/// Two rows without a value would not be the same to the database, so what names an item always has one.
const char* absentValue(AttributeKind kind) {
  switch (kind) {
  case AttributeKind::text:
  case AttributeKind::any:
    return "''";
  case AttributeKind::data:
    return "x''";
  default:
    return "0";
  }
}

std::string tableOf(const ItemClass& itemClass) {
  std::string columns = "row INTEGER PRIMARY KEY AUTOINCREMENT";
  std::string unique;
  for (const auto attributes : {itemClass.attributes, commonAttributes()}) {
    for (const Attribute& attribute : attributes) {
      columns += ", " + quoted(attribute.key);
      if (!attribute.primary) continue;
      columns += std::string(" NOT NULL DEFAULT ") + absentValue(attribute.kind);
      unique += (unique.empty() ? "" : ", ") + quoted(attribute.key);
    }
  }
  return "CREATE TABLE IF NOT EXISTS " + quoted(itemClass.name) + " (" + columns + ", v_Data, UNIQUE (" + unique +
         "));";
}

class Statement {
public:
  Statement(sqlite3* database, const std::string& text) {
    if (sqlite3_prepare_v2(database, text.c_str(), -1, &statement_, nullptr) != SQLITE_OK) statement_ = nullptr;
  }
  Statement(const Statement&) = delete;
  Statement& operator=(const Statement&) = delete;
  ~Statement() { sqlite3_finalize(statement_); }

  void bind(const Values& values) {
    for (const auto& each : values)
      bind(each.second);
  }
  void bind(const Value& value) {
    const int index = ++bound_;
    if (const auto* number = std::get_if<std::int64_t>(&value)) {
      sqlite3_bind_int64(statement_, index, *number);
    } else if (const auto* date = std::get_if<double>(&value)) {
      sqlite3_bind_double(statement_, index, *date);
    } else if (const auto* text = std::get_if<Text>(&value)) {
      sqlite3_bind_text64(statement_, index, text->characters.data(), text->characters.size(), SQLITE_TRANSIENT,
                          SQLITE_UTF8);
    } else if (const auto* bytes = std::get_if<Bytes>(&value)) {
      // Without a pointer it would be no value at all.
      const char* const start = bytes->bytes.empty() ? "" : bytes->bytes.data();
      sqlite3_bind_blob64(statement_, index, start, bytes->bytes.size(), SQLITE_TRANSIENT);
    }
  }

  int step() { return statement_ ? sqlite3_step(statement_) : SQLITE_ERROR; }

  Item row(const ItemClass& itemClass) const {
    Item item;
    item.itemClass = &itemClass;
    for (int i = 0; i < sqlite3_column_count(statement_); ++i) {
      const std::string column = sqlite3_column_name(statement_, i);
      if (column == "row") {
        item.row = sqlite3_column_int64(statement_, i);
      } else {
        item.values.emplace_back(column, value(i));
      }
    }
    return item;
  }

private:
  Value value(int i) const {
    const auto bytes = [&] {
      const void* const start = sqlite3_column_blob(statement_, i);
      const auto length = static_cast<std::size_t>(sqlite3_column_bytes(statement_, i));
      return start ? std::string(static_cast<const char*>(start), length) : std::string();
    };
    switch (sqlite3_column_type(statement_, i)) {
    case SQLITE_INTEGER:
      return static_cast<std::int64_t>(sqlite3_column_int64(statement_, i));
    case SQLITE_FLOAT:
      return sqlite3_column_double(statement_, i);
    case SQLITE_TEXT:
      return Text{bytes()};
    case SQLITE_BLOB:
      return Bytes{bytes()};
    default:
      return {};
    }
  }

  sqlite3_stmt* statement_ = nullptr;
  int bound_ = 0;
};

std::string where(const Conditions& conditions) {
  std::string text;
  for (const auto& each : conditions.equal) {
    text += (text.empty() ? " WHERE " : " AND ") + quoted(each.first) + " = ?";
    if (conditions.caseInsensitive) text += " COLLATE NOCASE";
  }
  if (conditions.row) text += (text.empty() ? " WHERE row = " : " AND row = ") + std::to_string(*conditions.row);
  return text;
}

Outcome outcome(int result, sqlite3* database) {
  if (result == SQLITE_CONSTRAINT) return Outcome::duplicate;
  if (result != SQLITE_DONE) return Outcome::unavailable;
  return sqlite3_changes(database) > 0 ? Outcome::done : Outcome::notFound;
}

} // namespace

KeychainDatabase::KeychainDatabase(const std::string& path) {
  const int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE;
  int result = sqlite3_open_v2(path.empty() ? ":memory:" : path.c_str(), &database_, flags, nullptr);
  sqlite3_busy_timeout(database_, kPatienceInMilliseconds);
  if (result == SQLITE_OK) {
    // One change for all tables: another app may be making them now. What was deleted is to be gone from the file too.
    std::string tables = "PRAGMA secure_delete = ON; BEGIN IMMEDIATE;";
    for (const ItemClass& itemClass : itemClasses())
      tables += tableOf(itemClass);
    result = sqlite3_exec(database_, (tables + "COMMIT").c_str(), nullptr, nullptr, nullptr);
  }
  if (result == SQLITE_OK) return;
  std::fprintf(stderr, "QVDevice: the keychain \"%s\" cannot be used: %s\n", path.c_str(), sqlite3_errmsg(database_));
  sqlite3_close(database_);
  database_ = nullptr;
}

KeychainDatabase::~KeychainDatabase() { sqlite3_close(database_); }

Outcome KeychainDatabase::add(const ItemClass& itemClass, const Values& values, std::int64_t& row) {
  if (!database_) return Outcome::unavailable;
  std::string columns;
  std::string places;
  for (const auto& each : values) {
    columns += (columns.empty() ? "" : ", ") + quoted(each.first);
    places += places.empty() ? "?" : ", ?";
  }
  Statement statement(database_,
                      "INSERT INTO " + quoted(itemClass.name) + " (" + columns + ") VALUES (" + places + ")");
  statement.bind(values);
  const Outcome result = outcome(statement.step(), database_);
  row = sqlite3_last_insert_rowid(database_);
  return result;
}

Outcome KeychainDatabase::find(const Conditions& conditions, std::int64_t limit, std::vector<Item>& items) {
  if (!database_) return Outcome::unavailable;
  Statement statement(database_, "SELECT * FROM " + quoted(conditions.itemClass->name) + where(conditions) +
                                     " ORDER BY row LIMIT " + std::to_string(limit));
  statement.bind(conditions.equal);
  int result = statement.step();
  for (; result == SQLITE_ROW; result = statement.step())
    items.push_back(statement.row(*conditions.itemClass));
  if (result != SQLITE_DONE) return Outcome::unavailable;
  return items.empty() ? Outcome::notFound : Outcome::done;
}

Outcome KeychainDatabase::update(const Conditions& conditions, const Values& values) {
  if (!database_) return Outcome::unavailable;
  std::string changes;
  for (const auto& each : values)
    changes += (changes.empty() ? "" : ", ") + quoted(each.first) + " = ?";
  Statement statement(database_,
                      "UPDATE " + quoted(conditions.itemClass->name) + " SET " + changes + where(conditions));
  statement.bind(values);
  statement.bind(conditions.equal);
  return outcome(statement.step(), database_);
}

Outcome KeychainDatabase::remove(const Conditions& conditions) {
  if (!database_) return Outcome::unavailable;
  Statement statement(database_, "DELETE FROM " + quoted(conditions.itemClass->name) + where(conditions));
  statement.bind(conditions.equal);
  return outcome(statement.step(), database_);
}

} // namespace qvdevice

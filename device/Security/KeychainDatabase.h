// The keychain as a database: a table for each item class, a column for each attribute, named as the attribute's
// constant is. The item's own data is the column "v_Data".
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "Security/KeychainSchema.h"

struct sqlite3;

namespace qvdevice {

struct Text {
  std::string characters;
};
struct Bytes {
  std::string bytes;
};
/// A date is a number of seconds. No value is what a column holds that was never given one.
using Value = std::variant<std::monostate, std::int64_t, double, Text, Bytes>;
using Values = std::vector<std::pair<std::string, Value>>;

struct Item {
  const ItemClass* itemClass = nullptr;
  std::int64_t row = 0;
  Values values;
};

/// Which items are meant: those of the class whose columns have all of these values.
struct Conditions {
  const ItemClass* itemClass = nullptr;
  Values equal;
  std::optional<std::int64_t> row;
  bool caseInsensitive = false;
};

enum class Outcome { done, notFound, duplicate, unavailable };

/// Not for two threads at once. Other processes may use the same file meanwhile.
class KeychainDatabase {
public:
  /// An empty path gives a keychain that is forgotten with the process.
  explicit KeychainDatabase(const std::string& path);
  KeychainDatabase(const KeychainDatabase&) = delete;
  KeychainDatabase& operator=(const KeychainDatabase&) = delete;
  ~KeychainDatabase();

  Outcome add(const ItemClass& itemClass, const Values& values, std::int64_t& row);
  /// In the order in which they were added; no more than `limit`.
  Outcome find(const Conditions& conditions, std::int64_t limit, std::vector<Item>& items);
  Outcome update(const Conditions& conditions, const Values& values);
  Outcome remove(const Conditions& conditions);

private:
  sqlite3* database_ = nullptr;
};

} // namespace qvdevice

#pragma once

#include <optional>
#include <string>

#include <nlohmann/json.hpp>

#include "observation/Reads.h"

namespace qvdevice {

/// A question that the library answers, from when it is asked until it is answered. One that is asked while another is
/// open on the same thread is part of that one and has no record of its own.
class Decision {
public:
  using Json = nlohmann::ordered_json;

  /// Without an argument the question has none.
  explicit Decision(std::string question, std::optional<Json> argument = std::nullopt);
  /// Nothing is traced of a question that nobody answered, because an exception came in between.
  ~Decision();
  Decision(const Decision&) = delete;
  Decision& operator=(const Decision&) = delete;

  /// Traces it, with what was read.
  void answer(Json answer);

private:
  friend bool isDeciding();
  friend void noteRead(const char* name, Json value);
  friend void keepOfRead(const char* name, const std::string& key);

  bool outermost_;
  Json record_;
  Json read_ = Json::object();
};

} // namespace qvdevice

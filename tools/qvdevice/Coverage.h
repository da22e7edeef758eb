#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include "Child.h"

namespace qvdevice {

/// How often each of the library's hooks was called in one process. The counters lie in memory that the process shares
/// with this one, so that they are there however it ends.
class Coverage {
public:
  /// Throws std::system_error when there is no such memory to be had.
  Coverage();
  ~Coverage();
  Coverage(const Coverage&) = delete;
  Coverage& operator=(const Coverage&) = delete;

  /// Lets the process that is launched count.
  void giveTo(Launch& launch) const;
  /// Takes notice of a hook, if the record is of one: it is new, or its state has changed.
  void note(const nlohmann::ordered_json& record);
  /// Whether there is any hook: without the library there is none.
  bool empty() const { return hooks_.empty(); }
  /// The record of all hooks:
  /// {"kind":"coverage","hooks":[{"class","selector","classMethod","state","why","fired"},...]}. Those that are not
  /// installed any more count what they were called before and, through whoever took their place, are called still;
  /// `fired` is null where nothing was counted.
  nlohmann::ordered_json record() const;

private:
  int descriptor_;
  const std::uint64_t* counters_;
  std::vector<nlohmann::ordered_json> hooks_;
};

/// The record as a table, its rows sorted by class as they were met.
std::vector<std::string> coverageInWords(const nlohmann::ordered_json& record);

} // namespace qvdevice

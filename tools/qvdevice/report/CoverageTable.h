#pragma once

#include <map>
#include <string>

#include <nlohmann/json.hpp>

#include "Markup.h"

namespace qvdevice {

/// How often each hook of the library was called, over all launches.
class CoverageTable {
public:
  /// A record of the kind "coverage".
  void add(const nlohmann::ordered_json& record);

  bool isEmpty() const { return hooks_.empty(); }
  /// "41 of 57 installed hooks were called".
  std::string summary() const;
  Markup table() const;

private:
  struct Hook {
    std::string state;
    std::string why;
    std::uint64_t fired = 0;
    bool counted = false; // somewhere
  };

  std::map<std::string, std::map<std::string, Hook>> hooks_; // by class, then by "+selector" or "-selector"
};

} // namespace qvdevice

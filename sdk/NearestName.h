#pragma once

#include <algorithm>
#include <cctype>
#include <numeric>
#include <string_view>
#include <vector>

/// How many letters must be put in, taken out or changed to make one text of the other; case does not count.
inline std::size_t editDistance(std::string_view from, std::string_view to) {
  const auto same = [](char a, char b) {
    return std::tolower(static_cast<unsigned char>(a)) == std::tolower(static_cast<unsigned char>(b));
  };
  std::vector<std::size_t> row(to.size() + 1);
  std::iota(row.begin(), row.end(), std::size_t{0});
  for (std::size_t i = 0; i < from.size(); ++i) {
    std::size_t diagonal = row[0];
    row[0] = i + 1;
    for (std::size_t j = 0; j < to.size(); ++j) {
      const std::size_t change = diagonal + (same(from[i], to[j]) ? 0 : 1);
      diagonal = row[j + 1];
      row[j + 1] = std::min({change, row[j] + 1, diagonal + 1});
    }
  }
  return row.back();
}

/// The one of `names` that somebody who wrote `name` most likely meant. `names` must not be empty.
template <class Names> std::string_view nearestName(std::string_view name, const Names& names) {
  return *std::min_element(std::begin(names), std::end(names), [name](std::string_view a, std::string_view b) {
    return editDistance(name, a) < editDistance(name, b);
  });
}

#include "Texts.h"

#include <fstream>
#include <initializer_list>
#include <map>
#include <set>
#include <stdexcept>
#include <string_view>

#include <nlohmann/json.hpp>

namespace qvcheck {

namespace {

const std::map<std::string, std::string> kinds{
    {"selectors", "the selector"}, {"classes", "the class name"}, {"texts", "the text"}, {"absent", ""}};

[[noreturn]] void refuse(const std::string& path, std::initializer_list<std::string_view> words) {
  std::string sentence = path;
  sentence += ": ";
  for (const std::string_view word : words) {
    sentence += word;
  }
  throw std::runtime_error(sentence);
}

std::vector<std::string> strings(const std::string& path, const std::string& key, const nlohmann::json& list) {
  std::vector<std::string> out;
  std::set<std::string> seen;
  if (!list.is_array()) {
    refuse(path, {"\"", key, "\" is no array"});
  }
  for (const auto& item : list) {
    if (!item.is_string() || item.get<std::string>().empty()) {
      refuse(path, {"\"", key, "\" holds something else than a text: ", item.dump()});
    }
    out.push_back(item.get<std::string>());
    if (!seen.insert(out.back()).second) {
      refuse(path, {"\"", key, "\" names \"", out.back(), "\" twice"});
    }
  }
  return out;
}

} // namespace

Texts Texts::read(const std::string& path) {
  std::ifstream file(path);
  if (!file) {
    refuse(path, {"cannot be opened"});
  }
  nlohmann::json json;
  try {
    json = nlohmann::json::parse(file, nullptr, true, true);
  } catch (const nlohmann::json::exception& problem) {
    refuse(path, {problem.what()});
  }
  if (!json.is_object()) {
    refuse(path, {"holds no JSON object"});
  }
  Texts texts;
  for (const auto& [key, list] : json.items()) {
    const auto kind = kinds.find(key);
    if (kind == kinds.end()) {
      refuse(path, {"has a key \"", key, "\" that nobody knows"});
    }
    const std::vector<std::string> items = strings(path, key, list);
    if (key == "absent") {
      texts.absent = items;
      continue;
    }
    for (const std::string& item : items) {
      texts.present.push_back({kind->second, item});
    }
  }
  return texts;
}

} // namespace qvcheck

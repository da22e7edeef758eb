#include "Texts.h"

#include <fstream>
#include <map>
#include <set>
#include <stdexcept>

#include <nlohmann/json.hpp>

namespace qvcheck {

namespace {

const std::map<std::string, std::string> kinds{
    {"selectors", "the selector"}, {"classes", "the class name"}, {"texts", "the text"}, {"absent", ""}};

std::vector<std::string> strings(const std::string& path, const std::string& key, const nlohmann::json& list) {
  std::vector<std::string> out;
  std::set<std::string> seen;
  if (!list.is_array()) {
    throw std::runtime_error(path + ": \"" + key + "\" is no array");
  }
  for (const auto& item : list) {
    if (!item.is_string() || item.get<std::string>().empty()) {
      throw std::runtime_error(path + ": \"" + key + "\" holds something else than a text: " + item.dump());
    }
    out.push_back(item.get<std::string>());
    if (!seen.insert(out.back()).second) {
      throw std::runtime_error(path + ": \"" + key + "\" names \"" + out.back() + "\" twice");
    }
  }
  return out;
}

} // namespace

Texts Texts::read(const std::string& path) {
  std::ifstream file(path);
  if (!file) {
    throw std::runtime_error(path + ": cannot be opened");
  }
  nlohmann::json json;
  try {
    json = nlohmann::json::parse(file, nullptr, true, true);
  } catch (const nlohmann::json::exception& problem) {
    throw std::runtime_error(path + ": " + problem.what());
  }
  if (!json.is_object()) {
    throw std::runtime_error(path + ": holds no JSON object");
  }
  Texts texts;
  for (const auto& [key, list] : json.items()) {
    const auto kind = kinds.find(key);
    if (kind == kinds.end()) {
      throw std::runtime_error(path + ": has a key \"" + key + "\" that nobody knows");
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

#include "ContainerTree.h"

#include <algorithm>
#include <set>
#include <system_error>

#include <sys/stat.h>

#include "Items.h"
#include "Words.h"

namespace fs = std::filesystem;

namespace qvdevice {

ContainerTree::ContainerTree(const fs::path& container) {
  std::error_code error;
  fs::recursive_directory_iterator item(container, fs::directory_options::skip_permission_denied, error);
  for (; !error && item != fs::recursive_directory_iterator(); item.increment(error)) {
    struct stat status{};
    if (lstat(item->path().c_str(), &status) != 0) {
      continue;
    }
    std::string path = item->path().lexically_relative(container).string();
    if (S_ISDIR(status.st_mode) && path.ends_with(".app") && item.depth() == 0) {
      item.disable_recursion_pending();
    }
    entries_[path] = {S_ISDIR(status.st_mode), storedProtection(item->path()),
                      status.st_mtim.tv_sec * 1'000'000'000 + status.st_mtim.tv_nsec};
  }
}

ContainerChange::ContainerChange(const ContainerTree& before, const ContainerTree& after, std::string defaultProtection)
    : before_(before), after_(after), defaultProtection_(std::move(defaultProtection)) {
  std::set<fs::path> paths; // part by part, so that a folder comes right before what it holds
  for (const ContainerTree* tree : {&before_, &after_}) {
    for (const auto& [path, entry] : tree->entries()) {
      paths.insert(path);
    }
  }
  const auto entryOf = [](const ContainerTree& tree, const std::string& path) {
    const auto found = tree.entries().find(path);
    return found == tree.entries().end() ? nullptr : &found->second;
  };
  for (const fs::path& path : paths) {
    Row row{path.string(), entryOf(before_, path.string()), entryOf(after_, path.string()), Change::kNone};
    if (row.before == nullptr) {
      row.change = Change::kNew;
      ++new_;
    } else if (row.after == nullptr) {
      row.change = Change::kGone;
      ++gone_;
    } else if (row.before->protection != row.after->protection) {
      row.change = Change::kClass;
      ++written_;
    } else if (!row.after->folder && row.before->changed != row.after->changed) {
      row.change = Change::kWritten;
      ++written_;
    }
    rows_.push_back(std::move(row));
  }
}

std::string ContainerChange::summary() const {
  std::string words;
  for (const auto& [count, what] :
       {std::pair(new_, " new"), std::pair(written_, " changed"), std::pair(gone_, " gone")}) {
    if (count > 0) {
      words += (words.empty() ? "" : ", ") + std::to_string(count) + what;
    }
  }
  return words.empty() ? "nothing has changed" : words;
}

Markup ContainerChange::protection(const ContainerTree::Entry* entry) const {
  if (entry == nullptr) {
    return Markup::element("td", {{"class", "none"}}, Markup::text("–"));
  }
  if (entry->protection.empty()) {
    return Markup::element("td", {{"class", "default"}}, Markup::text(inWords(defaultProtection_) + " (default)"));
  }
  const bool open = entry->protection == "NSFileProtectionNone";
  return Markup::element("td", {{"class", open ? "open" : "kept"}}, Markup::text(inWords(entry->protection)));
}

Markup ContainerChange::row(const Row& row) const {
  static constexpr const char* kClasses[] = {"same", "new", "written", "class", "gone"};
  static constexpr const char* kWords[] = {"", "new", "written", "class changed", "gone"};
  const auto change = static_cast<std::size_t>(row.change);
  const fs::path path = row.path;
  const auto depth = std::distance(path.begin(), path.end()) - 1;
  const bool folder = (row.after != nullptr ? row.after : row.before)->folder;
  return Markup::element("tr", {{"class", kClasses[change]}},
                         Markup::element("th", {{"scope", "row"}, {"style", "--depth:" + std::to_string(depth)}},
                                         Markup::text(path.filename().string() + (folder ? "/" : ""))) +
                             protection(row.before) + protection(row.after) +
                             Markup::element("td", {{"class", "change"}}, Markup::text(kWords[change])));
}

Markup ContainerChange::table(const std::string& caption) const {
  Markup body;
  for (const Row& each : rows_) {
    body += row(each);
  }
  Markup head;
  for (const char* title : {"Item", "Before", "After", "Change"}) {
    head += Markup::element("th", {{"scope", "col"}}, Markup::text(title));
  }
  return Markup::element("div", {{"class", "scroll"}, {"tabindex", "0"}, {"role", "region"}, {"aria-label", caption}},
                         Markup::element("table", {{"class", "tree"}},
                                         Markup::element("caption", {}, Markup::text(caption)) +
                                             Markup::element("thead", {}, Markup::element("tr", {}, head)) +
                                             Markup::element("tbody", {}, body)));
}

} // namespace qvdevice

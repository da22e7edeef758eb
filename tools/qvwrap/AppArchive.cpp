#include "AppArchive.h"

#include <algorithm>
#include <set>

#include "Failure.h"
#include "UndoRecord.h"
#include "ZipFormat.h"

namespace qvwrap {

namespace {

constexpr std::size_t kLargestInfoPlist = std::size_t{16} << 20;
constexpr std::size_t kLargestExecutable = std::size_t{1024} << 20;

/// The folder of the one app: "Payload/NAME.app/".
std::string appFolderIn(const ZipArchive& archive) {
  constexpr std::string_view payload = "Payload/";
  std::set<std::string> found;
  for (const ZipEntry& entry : archive.entries) {
    const std::size_t end = entry.name.find('/', payload.size());
    if (entry.name.starts_with(payload) && end != std::string::npos &&
        std::string_view(entry.name).substr(0, end).ends_with(".app") && end > payload.size() + 4) {
      found.insert(entry.name.substr(0, end + 1));
    }
  }
  if (found.empty()) {
    throw Failure(kRefused, "the archive holds no app: there is no Payload/NAME.app in it");
  }
  if (found.size() > 1) {
    throw Failure(kRefused, "the archive holds several apps: " + *found.begin() + ", " + *std::next(found.begin()));
  }
  return *found.begin();
}

void refuseLink(const ZipEntry& entry) {
  if (entry.isLink()) {
    throw Failure(kRefused, "\"" + entry.name + "\" in the archive is a symbolic link, not a file");
  }
}

} // namespace

AppArchive::AppArchive(View file, std::string name, Save save)
    : archive_(readZip(file)), name_(std::move(name)), save_(std::move(save)), folder_(appFolderIn(archive_)) {
  const ZipEntry* info = archive_.find(folder_ + "Info.plist");
  if (info == nullptr) {
    throw Failure(kRefused, "it is no app: it holds no Info.plist");
  }
  refuseLink(*info);
  executableName_ = executableNameIn(contentOf(archive_, *info, kLargestInfoPlist));
  entry_ = archive_.find(folder_ + executableName_);
  if (entry_ == nullptr) {
    throw Failure(kRefused, "it does not hold its executable, " + executableName_);
  }
  refuseLink(*entry_);
  if (archive_.find(folder_ + "Frameworks") != nullptr) {
    throw Failure(kRefused, "its Frameworks is no folder");
  }
  executable_ = contentOf(archive_, *entry_, kLargestExecutable);
}

bool AppArchive::holds(const std::string& path) const {
  const std::string file = folder_ + path;
  const std::string folder = file + "/";
  return std::ranges::any_of(
      archive_.entries, [&](const ZipEntry& entry) { return entry.name == file || entry.name.starts_with(folder); });
}

std::optional<Bytes> AppArchive::content(const std::string& path) const {
  const ZipEntry* entry = archive_.find(folder_ + path);
  return entry == nullptr ? std::nullopt : std::optional(contentOf(archive_, *entry, kLargestExecutable));
}

std::vector<std::string> AppArchive::extensions() const {
  std::set<std::string> found;
  for (const ZipEntry& entry : archive_.entries) {
    for (const std::string& parent : {folder_ + "PlugIns/", folder_ + "Extensions/", folder_ + "Watch/"}) {
      const std::size_t end = entry.name.find('/', parent.size());
      if (entry.name.starts_with(parent) && end != std::string::npos) {
        const std::string path = entry.name.substr(folder_.size(), end - folder_.size());
        if (path.ends_with(".appex") || path.ends_with(".app")) {
          found.insert(path);
        }
      }
    }
  }
  return {found.begin(), found.end()};
}

void AppArchive::put(View executable, const Framework& framework, bool addFolder) {
  if (archive_.find(kUndoRecord) != nullptr) {
    throw Failure(kRefused, std::string("the archive holds ") + kUndoRecord +
                                ", as a wrapped one does, and an app that "
                                "is not wrapped; remove that entry first");
  }
  const View old = archive_.file.subspan(entry_->data, entry_->compressedSize);
  UndoRecord record{archive_.file.size(), checksum(archive_.file), {}};
  ZipEdit edit;
  edit.replaced = entry_;
  edit.checksum = checksum(executable);
  edit.size = static_cast<std::uint32_t>(executable.size());
  if (entry_->method == zip::kStored) {
    edit.stream.assign(executable.begin(), executable.end());
  } else {
    Redeflated made = redeflated(old, executable_, executable);
    edit.stream = std::move(made.stream);
    record.head = std::move(made.head);
  }
  const std::string place = folder_ + kFrameworkFolder + "/";
  if (addFolder) {
    edit.added.push_back({folder_ + "Frameworks/", {}, false, false});
  }
  edit.added.push_back({place, {}, false, false});
  for (const std::string& folder : framework.folders) {
    edit.added.push_back({place + folder + "/", {}, false, false});
  }
  for (const FrameworkFile& file : framework.files) {
    edit.added.push_back({place + file.path, file.content, file.executable, true});
  }
  edit.added.push_back({kUndoRecord, record.bytes(), false, false});
  save_(ZipResult(archive_, edit));
}

/// The compressed form that an executable had before the app was wrapped, or another one if that is not known.
Bytes AppArchive::streamBefore(const std::optional<UndoRecord>& record, View executable) const {
  if (record) {
    const View now = archive_.file.subspan(entry_->data, entry_->compressedSize);
    if (std::optional<Bytes> stream = restored(now, record->head)) {
      const std::optional<Bytes> content = inflated(*stream, executable.size());
      if (content && std::ranges::equal(*content, executable)) {
        return *std::move(stream);
      }
    }
  }
  return deflated(executable);
}

App::Taken AppArchive::take(View executable, bool removeFolder) {
  ZipEdit edit;
  edit.replaced = entry_;
  edit.checksum = checksum(executable);
  edit.size = static_cast<std::uint32_t>(executable.size());

  std::optional<UndoRecord> record;
  if (const ZipEntry* entry = archive_.find(kUndoRecord)) {
    record = UndoRecord::from(contentOf(archive_, *entry, kLargestExecutable));
    edit.removed.push_back(entry);
  }
  const std::string place = folder_ + kFrameworkFolder + "/";
  const ZipEntry* frameworks = removeFolder ? archive_.find(folder_ + "Frameworks/") : nullptr;
  bool holdsMore = false;
  for (const ZipEntry& entry : archive_.entries) {
    if (entry.name.starts_with(place)) {
      edit.removed.push_back(&entry);
    } else if (entry.name.starts_with(folder_ + "Frameworks/") && &entry != frameworks) {
      holdsMore = true;
    }
  }
  if (frameworks != nullptr && !holdsMore) {
    edit.removed.push_back(frameworks);
  }

  if (entry_->method == zip::kStored) {
    edit.stream.assign(executable.begin(), executable.end());
  } else {
    edit.stream = streamBefore(record, executable);
  }
  const ZipResult result(archive_, edit);
  const bool same = record && result.size() == record->size && result.checksum() == record->checksum;
  save_(result);
  return same ? Taken::kAsBefore : Taken::kRepacked;
}

} // namespace qvwrap

#pragma once

#include <functional>

#include "App.h"
#include "UndoRecord.h"
#include "Zip.h"

namespace qvwrap {

/// An app in an archive: Payload/NAME.app in a zip file. It is never unpacked to disk.
class AppArchive : public App {
public:
  /// Puts another archive in the place of this one, whole or not at all.
  using Save = std::function<void(const ZipResult&)>;

  /// `file` must stay as it is until the object is gone; `save` may end it. Throws Failure.
  AppArchive(View file, std::string name, Save save);

  std::string name() const override { return name_; }
  const std::string& executableName() const override { return executableName_; }
  View executable() const override { return executable_; }
  bool holds(const std::string& path) const override;
  std::optional<Bytes> content(const std::string& path) const override;
  std::vector<std::string> extensions() const override;
  void put(View executable, const Framework& framework, bool addFolder) override;
  Taken take(View executable, bool removeFolder) override;

private:
  Bytes streamBefore(const std::optional<UndoRecord>& record, View executable) const;

  ZipArchive archive_;
  std::string name_;
  Save save_;
  std::string folder_; // "Payload/NAME.app/"
  std::string executableName_;
  const ZipEntry* entry_ = nullptr; // the executable's
  Bytes executable_;
};

} // namespace qvwrap

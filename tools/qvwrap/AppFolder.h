#pragma once

#include "App.h"

namespace qvwrap {

/// An app as a folder NAME.app.
class AppFolder : public App {
public:
  /// Throws Failure.
  explicit AppFolder(std::filesystem::path path);

  std::string name() const override { return path_.filename(); }
  const std::string& executableName() const override { return executableName_; }
  View executable() const override { return executable_; }
  bool holds(const std::string& path) const override;
  std::optional<Bytes> content(const std::string& path) const override;
  std::vector<std::string> extensions() const override;
  void put(View executable, const Framework& framework, bool addFolder) override;
  Taken take(View executable, bool removeFolder) override;

private:
  void replaceExecutable(View executable) const;

  std::filesystem::path path_;
  std::string executableName_;
  Bytes executable_;
};

} // namespace qvwrap

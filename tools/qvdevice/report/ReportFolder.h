#pragma once

#include <filesystem>
#include <string>

namespace qvdevice {

/// The folder that a report is written to, as index.html. It is checked, and a place in it taken, before anything
/// starts that is to be reported.
class ReportFolder {
public:
  /// Throws Failure for a folder that cannot be made or written to, or that holds anything but an older report.
  explicit ReportFolder(const std::filesystem::path& folder);
  ~ReportFolder();
  ReportFolder(const ReportFolder&) = delete;
  ReportFolder& operator=(const ReportFolder&) = delete;

  /// Puts the report in the place of an older one, whole or not at all. Throws Failure when it cannot be written, as on
  /// a full disk.
  void write(const std::string& html);

  std::filesystem::path page() const { return folder_ / "index.html"; }

private:
  std::filesystem::path part() const { return folder_ / "index.html.part"; }

  std::filesystem::path folder_;
  int file_ = -1;
};

} // namespace qvdevice

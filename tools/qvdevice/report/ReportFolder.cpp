#include "ReportFolder.h"

#include <cerrno>
#include <cstring>
#include <fstream>
#include <string_view>
#include <system_error>

#include <fcntl.h>
#include <unistd.h>

#include "Failure.h"

namespace fs = std::filesystem;

namespace qvdevice {

/// Whether a file is a report of ours: it says so near its beginning.
static bool isReport(const fs::path& file) {
  std::string start(512, '\0');
  std::ifstream stream(file, std::ios::binary);
  stream.read(start.data(), static_cast<std::streamsize>(start.size()));
  return start.find("<meta name=\"generator\" content=\"qvdevice\">") != std::string::npos;
}

ReportFolder::ReportFolder(const fs::path& folder) : folder_(folder) {
  std::error_code error;
  fs::create_directories(folder, error);
  if (error && !fs::is_directory(folder)) {
    throw Failure(kCannotWrite, "cannot make the report's folder " + folder.string() + ": " + error.message());
  }
  fs::directory_iterator entry(folder, error);
  if (error) {
    throw Failure(kCannotWrite, "cannot look into the report's folder " + folder.string() + ": " + error.message());
  }
  for (; entry != fs::directory_iterator(); ++entry) {
    const std::string name = entry->path().filename().string();
    const bool ours =
        (name == "index.html" && entry->is_regular_file() && isReport(entry->path())) || name == part().filename();
    if (!ours) {
      throw Failure(kCannotWrite, folder.string() + " holds " + name +
                                      ", which is no report of an earlier run; name an " + "empty or a new folder");
    }
  }
  file_ = open(part().c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_NOFOLLOW | O_CLOEXEC, 0644);
  if (file_ < 0) {
    throw Failure(kCannotWrite, "cannot write to the report's folder " + folder.string() + ": " + std::strerror(errno));
  }
}

ReportFolder::~ReportFolder() {
  if (file_ >= 0) {
    close(file_);
    unlink(part().c_str());
  }
}

void ReportFolder::write(const std::string& html) {
  const auto fail = [this](const char* reason) {
    throw Failure(kCannotWrite, "the report " + page().string() + " cannot be written: " + reason);
  };
  for (std::string_view rest = html; !rest.empty();) {
    const ssize_t written = ::write(file_, rest.data(), rest.size());
    if (written < 0 && errno == EINTR) {
      continue;
    }
    if (written <= 0) {
      fail(std::strerror(errno));
    }
    rest.remove_prefix(static_cast<std::size_t>(written));
  }
  const int file = file_;
  if (fsync(file) != 0 || rename(part().c_str(), page().c_str()) != 0) {
    fail(std::strerror(errno));
  }
  file_ = -1;
  close(file);
}

} // namespace qvdevice

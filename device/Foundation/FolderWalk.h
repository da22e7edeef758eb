// Going through a folder and all that it holds, however deep, with two descriptors open at a time. Symbolic links are
// items like any other and never followed, except that `root` itself may be one where the walker says so.
#pragma once

#include <dirent.h>
#include <sys/types.h>

#include <string>
#include <string_view>
#include <vector>

namespace qvdevice {

struct FolderEntry {
  std::string name;
  bool isFolder;
};

/// What the folder open at `descriptor` holds, without "." and "..". Answers 0 or an errno.
int listFolder(int descriptor, std::vector<FolderEntry>& entries);

/// What is done on the way. Each answers 0 to go on; an errno ends the walk with it. `parent` is the descriptor of the
/// folder that holds the item, `path` the item's path from the root on, without a slash at its start.
class FolderVisitor {
public:
  virtual ~FolderVisitor() = default;
  /// Something that is no folder, or a folder before what it holds.
  virtual int found(int parent, const FolderEntry& entry, const std::string& path) = 0;
  /// A folder after all that it holds.
  virtual int left(int, const std::string&, const std::string&) { return 0; }
  /// A folder that cannot be opened or listed, after `found`.
  virtual int unreadable(int, const std::string&, const std::string&, int) { return 0; }
};

enum class RootLink { followed, refused };

/// Answers 0, or the errno of a root that cannot be walked or that a visitor answered.
int walkFolder(const char* root, RootLink link, FolderVisitor& visitor);

} // namespace qvdevice

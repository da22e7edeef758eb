// One architecture of a binary, as LLVM's reader has found it whole and in order.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include <llvm/Object/MachO.h>
#include <llvm/TextAPI/Target.h>

namespace qvcheck {

class Slice {
public:
  /// `object` must outlive the slice; `path` names its file.
  Slice(std::string path, llvm::object::MachOObjectFile& object);

  struct Section {
    std::string name; ///< "__TEXT,__cstring"
    uint64_t address;
    uint32_t flags;
    std::string_view content; ///< nothing for what only the memory has
    uint32_t type() const { return flags & llvm::MachO::SECTION_TYPE; }
  };
  struct Segment {
    std::string name;
    uint32_t initialProtection;
    uint32_t maximalProtection;
  };

  /// The file and the slice, for findings.
  const std::string& where() const { return where_; }
  llvm::object::MachOObjectFile& object() const { return object_; }
  std::string architecture() const;
  std::string_view bytes() const { return {object_.getData().data(), object_.getData().size()}; }

  /// Unknown, and version 0, when the binary does not say.
  const llvm::MachO::Target& target() const { return target_; }
  std::string platformName() const;

  const std::vector<Segment>& segments() const { return segments_; }
  const std::vector<Section>& sections() const { return sections_; }
  /// Install names of the libraries that are loaded first, in the order by which imports name them.
  const std::vector<std::string>& libraries() const { return libraries_; }
  bool hasChainedFixups() const;

private:
  using Command = llvm::object::MachOObjectFile::LoadCommandInfo;
  void readSegment(const Command& command);
  void readTarget(const Command& command);

  llvm::object::MachOObjectFile& object_;
  std::string where_;
  llvm::MachO::Target target_;
  std::vector<Segment> segments_;
  std::vector<Section> sections_;
  std::vector<std::string> libraries_;
};

/// The text at `offset` of a load command, without what fills it up.
std::string commandText(const llvm::object::MachOObjectFile::LoadCommandInfo& command, uint32_t offset);

/// A load command's name, or its number.
std::string commandName(uint32_t command);

} // namespace qvcheck

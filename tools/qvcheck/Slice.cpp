#include "Slice.h"

#include <cstring>

#include <llvm/TextAPI/Architecture.h>

namespace qvcheck {

using namespace llvm;

static std::string fixedText(const char* text, std::size_t size) { return {text, strnlen(text, size)}; }

std::string commandText(const object::MachOObjectFile::LoadCommandInfo& command, uint32_t offset) {
  return offset < command.C.cmdsize ? fixedText(command.Ptr + offset, command.C.cmdsize - offset) : "";
}

std::string commandName(uint32_t command) {
  switch (command) {
#define HANDLE_LOAD_COMMAND(NAME, VALUE, STRUCT)                                                                       \
  case MachO::NAME:                                                                                                    \
    return #NAME;
#include <llvm/BinaryFormat/MachO.def>
  default:
    return std::to_string(command);
  }
}

Slice::Slice(std::string path, object::MachOObjectFile& object)
    : object_(object), where_(std::move(path)), target_(MachO::AK_unknown, MachO::PLATFORM_UNKNOWN) {
  target_.Arch = MachO::getArchitectureFromCpuType(object.getHeader().cputype, object.getHeader().cpusubtype);
  where_ += " (" + architecture() + ")";
  for (const Command& command : object.load_commands()) {
    switch (command.C.cmd) {
    case MachO::LC_SEGMENT_64:
      readSegment(command);
      break;
    case MachO::LC_BUILD_VERSION:
    case MachO::LC_VERSION_MIN_IPHONEOS:
      readTarget(command);
      break;
    case MachO::LC_LOAD_DYLIB:
    case MachO::LC_LOAD_WEAK_DYLIB:
    case MachO::LC_REEXPORT_DYLIB:
    case MachO::LC_LOAD_UPWARD_DYLIB:
    case MachO::LC_LAZY_LOAD_DYLIB:
      libraries_.push_back(commandText(command, object.getDylibIDLoadCommand(command).dylib.name));
      break;
    default:
      break;
    }
  }
}

void Slice::readSegment(const Command& command) {
  const MachO::segment_command_64 segment = object_.getSegment64LoadCommand(command);
  segments_.push_back({fixedText(segment.segname, 16), segment.initprot, segment.maxprot});
  for (unsigned i = 0; i < segment.nsects; ++i) {
    const MachO::section_64 section = object_.getSection64(command, i);
    Section out{
        fixedText(section.segname, 16) + "," + fixedText(section.sectname, 16), section.addr, section.flags, {}};
    const uint32_t type = out.type();
    const bool inMemoryOnly =
        type == MachO::S_ZEROFILL || type == MachO::S_GB_ZEROFILL || type == MachO::S_THREAD_LOCAL_ZEROFILL;
    if (!inMemoryOnly && section.offset <= bytes().size()) {
      out.content = bytes().substr(section.offset, section.size);
    }
    sections_.push_back(out);
  }
}

/// Before there was a command that names the platform, the simulator was told by its processor.
void Slice::readTarget(const Command& command) {
  uint32_t version = 0;
  if (command.C.cmd == MachO::LC_BUILD_VERSION) {
    const MachO::build_version_command build = object_.getBuildVersionLoadCommand(command);
    target_.Platform = static_cast<MachO::PlatformType>(build.platform);
    version = build.minos;
  } else {
    target_.Platform = target_.Arch == MachO::AK_x86_64 ? MachO::PLATFORM_IOSSIMULATOR : MachO::PLATFORM_IOS;
    version = object_.getVersionMinLoadCommand(command).version;
  }
  target_.MinDeployment = VersionTuple(version >> 16, (version >> 8) & 0xff);
}

std::string Slice::architecture() const {
  return target_.Arch == MachO::AK_unknown ? "unknown" : MachO::getArchitectureName(target_.Arch).str();
}

std::string Slice::platformName() const {
  switch (target_.Platform) {
  case MachO::PLATFORM_UNKNOWN:
    return "none";
  case MachO::PLATFORM_IOS:
    return "iPhoneOS";
  case MachO::PLATFORM_IOSSIMULATOR:
    return "iPhoneSimulator";
  default:
    return "number " + std::to_string(static_cast<unsigned>(target_.Platform));
  }
}

bool Slice::hasChainedFixups() const {
  for (const Command& command : object_.load_commands()) {
    if (command.C.cmd == MachO::LC_DYLD_CHAINED_FIXUPS) {
      return true;
    }
  }
  return false;
}

} // namespace qvcheck

#include <algorithm>
#include <map>
#include <set>

#include "Checks.h"

namespace qvcheck {

using namespace llvm;

namespace {

/// What a library may say to the loader. Whatever is not here makes it do something else on load, or need something.
const std::set<uint32_t> harmless{MachO::LC_SEGMENT_64,
                                  MachO::LC_DYLD_INFO_ONLY,
                                  MachO::LC_SYMTAB,
                                  MachO::LC_DYSYMTAB,
                                  MachO::LC_ENCRYPTION_INFO_64,
                                  MachO::LC_ID_DYLIB,
                                  MachO::LC_UUID,
                                  MachO::LC_BUILD_VERSION,
                                  MachO::LC_LOAD_DYLIB,
                                  MachO::LC_FUNCTION_STARTS,
                                  MachO::LC_DATA_IN_CODE,
                                  MachO::LC_CODE_SIGNATURE,
                                  MachO::LC_SOURCE_VERSION,
                                  MachO::LC_VERSION_MIN_IPHONEOS,
                                  MachO::LC_DYLD_CHAINED_FIXUPS,
                                  MachO::LC_DYLD_EXPORTS_TRIE};

const std::vector<uint32_t> once{MachO::LC_ID_DYLIB, MachO::LC_UUID, MachO::LC_SYMTAB, MachO::LC_DYSYMTAB,
                                 MachO::LC_CODE_SIGNATURE};

std::string versionText(uint32_t version) {
  return std::to_string(version >> 16) + "." + std::to_string((version >> 8) & 0xff) + "." +
         std::to_string(version & 0xff);
}

/// Where the slice may run, or nothing.
std::string oldestRelease(const MachO::Target& target) {
  if (target.Platform == MachO::PLATFORM_IOS && target.Arch == MachO::AK_arm64) {
    return "12.0";
  }
  if (target.Platform == MachO::PLATFORM_IOSSIMULATOR && target.Arch == MachO::AK_x86_64) {
    return "12.0";
  }
  if (target.Platform == MachO::PLATFORM_IOSSIMULATOR && target.Arch == MachO::AK_arm64) {
    return "14.0";
  }
  return "";
}

void checkTarget(const Slice& slice, Findings& findings) {
  const std::string oldest = oldestRelease(slice.target());
  if (oldest.empty()) {
    findings.wrong(slice.where(), "is for platform " + slice.platformName() + " on " + slice.architecture() +
                                      ", which is no target of the framework");
    return;
  }
  findings.expect(slice.where(), "the oldest release", oldest, slice.target().MinDeployment.getAsString());
}

void checkLibraries(const Slice& slice, Findings& findings) {
  std::map<std::string, int> count;
  for (const std::string& library : slice.libraries()) {
    if (++count[library] == 2) {
      findings.wrong(slice.where(), "names " + library + " twice among the libraries to load first");
    }
  }
  for (const std::string& library : kLibraries) {
    if (!count.contains(library)) {
      findings.wrong(slice.where(), "does not name " + library + " among the libraries to load first");
    }
  }
}

} // namespace

void checkLoadCommands(const Slice& slice, Findings& findings) {
  object::MachOObjectFile& object = slice.object();
  const std::string& where = slice.where();
  if (object.getHeader().filetype != MachO::MH_DYLIB) {
    findings.wrong(where, "is no dynamic library");
  }
  if (!(object.getHeader().flags & MachO::MH_TWOLEVEL)) {
    findings.wrong(where, "leaves open which library each symbol comes from");
  }
  std::map<uint32_t, int> count;
  for (const auto& command : object.load_commands()) {
    ++count[command.C.cmd];
    if (!harmless.contains(command.C.cmd)) {
      findings.wrong(where, "has a load command that does not belong there: " + commandName(command.C.cmd));
    }
    if (command.C.cmd == MachO::LC_ID_DYLIB) {
      const MachO::dylib_command id = object.getDylibIDLoadCommand(command);
      findings.expect(where, "the install name", kInstallName, commandText(command, id.dylib.name));
      findings.expect(where, "the current version", std::string(kShortVersion), versionText(id.dylib.current_version));
      findings.expect(where, "the compatibility version", "1.0.0", versionText(id.dylib.compatibility_version));
    } else if (command.C.cmd == MachO::LC_ENCRYPTION_INFO_64 &&
               object.getEncryptionInfoCommand64(command).cryptid != 0) {
      findings.wrong(where, "is encrypted");
    }
  }
  for (const uint32_t command : once) {
    if (count[command] != 1) {
      findings.wrong(where, "has " + std::to_string(count[command]) + " load commands " + commandName(command) +
                                ", expected 1");
    }
  }
  if (count[MachO::LC_BUILD_VERSION] + count[MachO::LC_VERSION_MIN_IPHONEOS] != 1) {
    findings.wrong(where, "does not name one platform");
  } else {
    checkTarget(slice, findings);
  }
  checkLibraries(slice, findings);
}

void checkSegments(const Slice& slice, Findings& findings) {
  const uint32_t both = MachO::VM_PROT_WRITE | MachO::VM_PROT_EXECUTE;
  for (const Slice::Segment& segment : slice.segments()) {
    if ((segment.initialProtection & both) == both || (segment.maximalProtection & both) == both) {
      findings.wrong(slice.where(), "has a segment " + segment.name + " that can be written and executed");
    }
  }
  for (const Slice::Section& section : slice.sections()) {
    const bool code = section.flags & (MachO::S_ATTR_PURE_INSTRUCTIONS | MachO::S_ATTR_SOME_INSTRUCTIONS);
    if (code && !section.name.starts_with("__TEXT,")) {
      findings.wrong(slice.where(), "has code outside the segment of code: " + section.name);
    }
  }
}

} // namespace qvcheck

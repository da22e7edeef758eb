#include <algorithm>
#include <map>

#include <llvm/Demangle/Demangle.h>
#include <llvm/Support/Endian.h>

#include "Checks.h"

namespace qvcheck {

using namespace llvm;

namespace {

/// What the loader will find in the slot at `address` when the file holds `raw`.
uint64_t pointerAt(const Slice& slice, uint64_t address, uint64_t raw, Findings& findings) {
  if (!slice.hasChainedFixups()) {
    return raw;
  }
  Error error = Error::success();
  uint64_t pointer = raw;
  for (const object::MachOChainedFixupEntry& entry : slice.object().fixupTable(error)) {
    if (entry.isRebase() && entry.address() == address) {
      pointer = entry.pointerValue();
    }
  }
  if (error) {
    findings.wrong(slice.where(), "the chain of fix-ups cannot be read: " + toString(std::move(error)));
  }
  return pointer;
}

uint64_t textAddress(const Slice& slice) {
  for (const auto& command : slice.object().load_commands()) {
    if (command.C.cmd == MachO::LC_SEGMENT_64) {
      const MachO::segment_command_64 segment = slice.object().getSegment64LoadCommand(command);
      if (StringRef(segment.segname).starts_with("__TEXT")) {
        return segment.vmaddr;
      }
    }
  }
  return 0;
}

/// An exported symbol's address, 0 for none.
uint64_t exportedAddress(const Slice& slice, const std::string& name) {
  Error error = Error::success();
  uint64_t address = 0;
  for (const object::ExportEntry& entry : slice.object().exports(error)) {
    if (entry.name() == name) {
      address = entry.address() + textAddress(slice);
    }
  }
  consumeError(std::move(error)); // told by checkExports
  return address;
}

/// Code that the loader or the runtime would run besides the initialisers.
void checkNothingElseRuns(const Slice& slice, Findings& findings) {
  static const std::map<std::string, std::string> eager{{"__objc_nlclslist", "a class with a +load"},
                                                        {"__objc_nlcatlist", "a category with a +load"}};
  for (const Slice::Section& section : slice.sections()) {
    if (section.type() == MachO::S_MOD_TERM_FUNC_POINTERS) {
      findings.wrong(slice.where(), "runs code at exit: " + section.name);
    } else if (section.type() == MachO::S_THREAD_LOCAL_INIT_FUNCTION_POINTERS) {
      findings.wrong(slice.where(), "runs code for each thread: " + section.name);
    }
    const auto entry = eager.find(section.name.substr(section.name.find(',') + 1));
    if (entry != eager.end()) {
      findings.wrong(slice.where(), "has " + entry->second + ", which runs before the initialisers");
    }
  }
}

} // namespace

std::vector<uint64_t> initialisers(const Slice& slice, Findings& findings) {
  std::vector<uint64_t> out;
  for (const Slice::Section& section : slice.sections()) {
    if (section.type() == MachO::S_MOD_INIT_FUNC_POINTERS) {
      for (std::size_t at = 0; at + 8 <= section.content.size(); at += 8) {
        const uint64_t raw = support::endian::read64le(section.content.data() + at);
        out.push_back(pointerAt(slice, section.address + at, raw, findings));
      }
    } else if (section.type() == MachO::S_INIT_FUNC_OFFSETS) {
      for (std::size_t at = 0; at + 4 <= section.content.size(); at += 4) {
        out.push_back(textAddress(slice) + support::endian::read32le(section.content.data() + at));
      }
    }
  }
  return out;
}

void checkInitialisers(const Slice& slice, Findings& findings) {
  checkNothingElseRuns(slice, findings);
  const std::vector<uint64_t> found = initialisers(slice, findings);
  if (found.size() != kInitialisers.size()) {
    findings.wrong(slice.where(), "has " + std::to_string(found.size()) + " initialisers, expected " +
                                      std::to_string(kInitialisers.size()));
    return;
  }
  const uint64_t last = exportedAddress(slice, "_" + kInitialisers.back());
  if (found.back() != last) {
    findings.wrong(slice.where(), "runs another initialiser after " + kInitialisers.back());
  }
  if (std::count(found.begin(), found.end(), last) != 1) {
    findings.wrong(slice.where(), "runs " + kInitialisers.back() + " more than once");
  }
}

void checkDebugSymbols(const Slice& slice, const Slice& symbols, Findings& findings) {
  const auto uuid = slice.object().getUuid();
  if (uuid.empty() || uuid != symbols.object().getUuid()) {
    findings.wrong(symbols.where(), "has another UUID than the framework's binary");
  }
  if (std::none_of(symbols.sections().begin(), symbols.sections().end(),
                   [](const auto& section) { return section.name == "__DWARF,__debug_info"; })) {
    findings.wrong(symbols.where(), "holds no debug information");
  }
  std::map<uint64_t, std::string> names;
  for (const object::SymbolRef& symbol : symbols.object().symbols()) {
    Expected<uint64_t> address = symbol.getAddress();
    Expected<StringRef> name = symbol.getName();
    if (address && name && !name->empty()) {
      names.emplace(*address, demangle(name->substr(1)));
    }
    consumeError(address.takeError());
    consumeError(name.takeError());
  }
  const std::vector<uint64_t> found = initialisers(slice, findings);
  for (std::size_t i = 0; i < std::min(found.size(), kInitialisers.size()); ++i) {
    findings.expect(symbols.where(), "the name of initialiser " + std::to_string(i + 1), kInitialisers[i],
                    names.contains(found[i]) ? names[found[i]] : "unknown");
  }
}

} // namespace qvcheck

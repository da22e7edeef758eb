#include <regex>

#include "Checks.h"

namespace qvcheck {

using namespace llvm;

namespace {

bool printable(char c) { return c >= 0x20 && c != 0x7f; }

/// Whether the text stands there by itself: not as a part of a longer one.
bool standsIn(std::string_view content, const std::string& text) {
  const std::string_view terminated(text.c_str(), text.size() + 1);
  for (std::size_t at = content.find(terminated); at != std::string_view::npos; at = content.find(terminated, at + 1)) {
    if (at == 0 || !printable(content[at - 1])) {
      return true;
    }
  }
  return false;
}

bool holds(const Slice& slice, const std::string& text) {
  for (const Slice::Section& section : slice.sections()) {
    const bool code = section.flags & MachO::S_ATTR_PURE_INSTRUCTIONS;
    if (!code && standsIn(section.content, text)) {
      return true;
    }
  }
  return false;
}

/// The text around `at`, up to what is no text.
std::string around(std::string_view bytes, std::size_t at) {
  std::size_t from = at;
  while (from > 0 && printable(bytes[from - 1])) {
    --from;
  }
  std::size_t to = at;
  while (to < bytes.size() && printable(bytes[to])) {
    ++to;
  }
  return std::string(bytes.substr(from, to - from));
}

/// Folders that only the machine has on which something was built: where the framework's own sources lie, and where
/// other people's do.
void checkPaths(const Slice& slice, const std::string& sources, Findings& findings) {
  std::vector<std::string> folders{"/home/", "/root/", "/tmp/", "/Users/", "/build/", "/mnt/", "/src/", "/var/"};
  if (!sources.empty()) {
    folders.push_back(sources.ends_with('/') ? sources : sources + "/");
  }
  for (const std::string& folder : folders) {
    for (std::size_t at = slice.bytes().find(folder); at != std::string_view::npos;
         at = slice.bytes().find(folder, at + 1)) {
      const char before = at == 0 ? '\0' : slice.bytes()[at - 1];
      if (std::isalnum(static_cast<unsigned char>(before)) == 0 && before != '@' && before != '.') {
        findings.wrong(slice.where(), "tells where it was built: " + around(slice.bytes(), at));
        return;
      }
    }
  }
}

void checkNoDebugInformation(const Slice& slice, Findings& findings) {
  for (const Slice::Segment& segment : slice.segments()) {
    if (segment.name == "__DWARF") {
      findings.wrong(slice.where(), "holds debug information");
    }
  }
  std::size_t local = 0;
  for (const object::SymbolRef& symbol : slice.object().symbols()) {
    const uint8_t type = slice.object().getSymbol64TableEntry(symbol.getRawDataRefImpl()).n_type;
    local += (type & MachO::N_STAB) != 0 || (type & (MachO::N_EXT | MachO::N_PEXT)) != MachO::N_EXT ? 1 : 0;
  }
  if (local != 0) {
    findings.wrong(slice.where(), "has " + std::to_string(local) + " symbols that only a debugger wants");
  }
}

} // namespace

void checkTexts(const Slice& slice, const Promises& promises, Findings& findings) {
  for (const Texts::Text& text : promises.texts.present) {
    if (!holds(slice, text.text)) {
      findings.wrong(slice.where(), "does not hold " + text.kind + " \"" + text.text + "\"");
    }
  }
  for (const std::string& text : promises.texts.absent) {
    const std::size_t at = slice.bytes().find(text);
    if (at != std::string_view::npos) {
      findings.wrong(slice.where(), "holds \"" + text + "\", which is for debugging: " + around(slice.bytes(), at));
    }
  }
  checkPaths(slice, promises.sources, findings);
  checkNoDebugInformation(slice, findings);
}

} // namespace qvcheck

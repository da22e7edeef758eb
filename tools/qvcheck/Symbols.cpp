#include <algorithm>
#include <set>

#include "Checks.h"

namespace qvcheck {

using namespace llvm;

namespace {

std::string joined(const std::set<std::string>& names) {
  std::string text;
  for (const std::string& name : names) {
    text += (text.empty() ? "" : " ") + name;
  }
  return text;
}

void checkNothingUnread(const Slice& slice, Error error, const std::string& what, Findings& findings) {
  if (error) {
    findings.wrong(slice.where(), what + " cannot be read: " + toString(std::move(error)));
  }
}

/// Goes through the imports one by one.
class Imports {
public:
  Imports(const Slice& slice, const Promises& promises, Findings& findings)
      : slice_(slice), promises_(promises), findings_(findings) {}

  void add(const std::string& symbol, int ordinal) {
    if (!seen_.insert({symbol, ordinal}).second) {
      return;
    }
    if (ordinal < 1 || static_cast<std::size_t>(ordinal) > slice_.libraries().size()) {
      findings_.wrong(slice_.where(), "imports " + symbol + " from " +
                                          (ordinal == 0 ? "itself" : "whichever library has it at run time"));
      return;
    }
    const std::string& library = slice_.libraries()[static_cast<std::size_t>(ordinal) - 1];
    if (!promises_.stubs.hasLibrary(library)) {
      findings_.wrong(slice_.where(), "imports " + symbol + " from " + library + ", for which there is no stub");
    } else if (!promises_.stubs.has(library, slice_.target(), symbol)) {
      findings_.wrong(slice_.where(), "imports " + symbol + " from " + library + ", whose stub does not list it for " +
                                          slice_.platformName() + " on " + slice_.architecture());
    }
  }

  std::size_t count() const { return seen_.size(); }

private:
  const Slice& slice_;
  const Promises& promises_;
  Findings& findings_;
  std::set<std::pair<std::string, int>> seen_;
};

} // namespace

void checkExports(const Slice& slice, const Promises& promises, Findings& findings) {
  std::set<std::string> extra;
  std::set<std::string> missing(promises.exports.begin(), promises.exports.end());
  Error error = Error::success();
  for (const object::ExportEntry& entry : slice.object().exports(error)) {
    const std::string name = entry.name().str();
    if (!missing.erase(name)) {
      extra.insert(name);
    }
    if (entry.flags() & (MachO::EXPORT_SYMBOL_FLAGS_REEXPORT | MachO::EXPORT_SYMBOL_FLAGS_STUB_AND_RESOLVER)) {
      findings.wrong(slice.where(), "exports " + name + " on behalf of somebody else");
    }
  }
  checkNothingUnread(slice, std::move(error), "the list of exported symbols", findings);
  if (!extra.empty()) {
    findings.wrong(slice.where(), "exports what is not on the list: " + joined(extra));
  }
  if (!missing.empty()) {
    findings.wrong(slice.where(), "does not export what is on the list: " + joined(missing));
  }
}

Fixups checkImports(const Slice& slice, const Promises& promises, Findings& findings) {
  Fixups fixups;
  Imports imports(slice, promises, findings);
  object::MachOObjectFile& object = slice.object();

  Error error = Error::success();
  for (const object::MachORebaseEntry& entry : object.rebaseTable(error)) {
    static_cast<void>(entry);
    ++fixups.rebases;
  }
  checkNothingUnread(slice, std::move(error), "the list of rebases", findings);

  Error bindError = Error::success();
  for (const object::MachOBindEntry& entry : object.bindTable(bindError)) {
    ++fixups.binds;
    imports.add(entry.symbolName().str(), entry.ordinal());
  }
  checkNothingUnread(slice, std::move(bindError), "the list of binds", findings);

  Error lazyError = Error::success();
  for (const object::MachOBindEntry& entry : object.lazyBindTable(lazyError)) {
    ++fixups.lazyBinds;
    imports.add(entry.symbolName().str(), entry.ordinal());
  }
  checkNothingUnread(slice, std::move(lazyError), "the list of lazy binds", findings);

  Error weakError = Error::success();
  for (const object::MachOBindEntry& entry : object.weakBindTable(weakError)) {
    findings.wrong(slice.where(), "has a symbol that any library may provide: " + entry.symbolName().str());
  }
  checkNothingUnread(slice, std::move(weakError), "the list of weak binds", findings);

  if (slice.hasChainedFixups()) {
    Error chainError = Error::success();
    for (const object::MachOChainedFixupEntry& entry : object.fixupTable(chainError)) {
      if (entry.isBind()) {
        ++fixups.binds;
        imports.add(entry.symbolName().str(), entry.ordinal());
      } else {
        ++fixups.rebases;
      }
    }
    checkNothingUnread(slice, std::move(chainError), "the chain of fix-ups", findings);
  }
  fixups.imports = imports.count();
  return fixups;
}

} // namespace qvcheck

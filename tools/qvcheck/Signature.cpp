#include <algorithm>

#include <llvm/Support/Endian.h>
#include <llvm/Support/SHA256.h>

#include "Checks.h"

namespace qvcheck {

using namespace llvm;

namespace {

constexpr uint32_t kSuperBlob = 0xfade0cc0;
constexpr uint32_t kCodeDirectory = 0xfade0c02;
constexpr uint32_t kAdHoc = 0x2;
constexpr uint8_t kSha256 = 2;
constexpr std::size_t kHashSize = 32;

/// Big-endian numbers of a blob; what lies beyond its end is 0.
class Reader {
public:
  explicit Reader(std::string_view bytes) : bytes_(bytes) {}
  uint32_t word(std::size_t at) const {
    return at + 4 <= bytes_.size() ? support::endian::read32be(bytes_.data() + at) : 0;
  }
  uint8_t byte(std::size_t at) const { return at < bytes_.size() ? static_cast<uint8_t>(bytes_[at]) : 0; }
  std::string_view bytes(std::size_t at, std::size_t count) const {
    return at <= bytes_.size() ? bytes_.substr(at, count) : std::string_view();
  }
  std::size_t size() const { return bytes_.size(); }

private:
  std::string_view bytes_;
};

/// The blob that says what has been signed, empty when there is none.
std::string_view codeDirectory(const Reader& signature) {
  if (signature.word(0) != kSuperBlob) {
    return {};
  }
  for (uint32_t i = 0; i < signature.word(8) && 12 + 8 * static_cast<std::size_t>(i) < signature.size(); ++i) {
    const uint32_t offset = signature.word(12 + 8 * i + 4);
    if (signature.word(offset) == kCodeDirectory) {
      return signature.bytes(offset, signature.word(offset + 4));
    }
  }
  return {};
}

std::string_view hashOf(std::string_view page, std::array<uint8_t, kHashSize>& out) {
  out = SHA256::hash({reinterpret_cast<const uint8_t*>(page.data()), page.size()});
  return {reinterpret_cast<const char*>(out.data()), out.size()};
}

/// Compares each page with its hash.
void checkPages(const Slice& slice, const Reader& directory, std::size_t end, Findings& findings) {
  const uint32_t hashes = directory.word(16);
  const uint32_t count = directory.word(28);
  const std::size_t page = std::size_t{1} << std::min<uint8_t>(directory.byte(39), 20);
  if (count != (end + page - 1) / page) {
    findings.wrong(slice.where(), "has a signature over " + std::to_string(count) + " pages of " +
                                      std::to_string(page) + " bytes, expected " +
                                      std::to_string((end + page - 1) / page));
    return;
  }
  for (uint32_t i = 0; i < count; ++i) {
    std::array<uint8_t, kHashSize> hash{};
    const std::size_t from = i * page;
    if (hashOf(slice.bytes().substr(from, std::min(page, end - from)), hash) !=
        directory.bytes(hashes + i * kHashSize, kHashSize)) {
      findings.wrong(slice.where(), "has been changed after it was signed: page " + std::to_string(i));
      return;
    }
  }
}

} // namespace

void checkSignature(const Slice& slice, Findings& findings) {
  for (const auto& command : slice.object().load_commands()) {
    if (command.C.cmd != MachO::LC_CODE_SIGNATURE) {
      continue;
    }
    const MachO::linkedit_data_command place = slice.object().getLinkeditDataLoadCommand(command);
    const std::size_t end = std::size_t{place.dataoff} + place.datasize;
    if (end != slice.bytes().size()) {
      findings.wrong(slice.where(), "does not end with its signature");
    }
    const Reader directory(codeDirectory(
        Reader(slice.bytes().substr(std::min<std::size_t>(place.dataoff, slice.bytes().size()), place.datasize))));
    if (directory.size() == 0) {
      findings.wrong(slice.where(), "has no signature where its load command says");
      return;
    }
    if (!(directory.word(12) & kAdHoc)) {
      findings.wrong(slice.where(), "is not signed ad hoc");
    }
    if (directory.byte(36) != kHashSize || directory.byte(37) != kSha256) {
      findings.wrong(slice.where(), "is signed with something else than SHA-256");
      return;
    }
    const std::string_view identifier = directory.bytes(directory.word(20), directory.size());
    findings.expect(slice.where(), "the signature's identifier", kName,
                    std::string(identifier.substr(0, identifier.find('\0'))));
    if (directory.word(32) != place.dataoff) {
      findings.wrong(slice.where(), "has a signature that does not cover all that is before it");
    }
    checkPages(slice, directory, place.dataoff, findings);
  }
}

} // namespace qvcheck

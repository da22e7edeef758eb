#pragma once

#include <string>

#include "MachO.h"

namespace qvwrap {

/// Reads the load commands of a 64-bit part, which has a whole header, into a Slice.
class SliceReader {
public:
  SliceReader(View bytes, Slice& slice, std::string what);

  /// Throws Failure.
  void read();

private:
  void command(std::uint32_t kind, std::size_t at, std::size_t size);
  void segment(std::size_t at, std::size_t size);
  void dylib(std::uint32_t kind, std::size_t at, std::size_t size);
  void runpath(std::size_t at, std::size_t size);
  void table(std::size_t at, std::size_t entrySize, const char* name);
  void content(std::uint64_t offset, std::uint64_t size, const std::string& name);
  void fits(std::uint64_t offset, std::uint64_t size, const std::string& name) const;
  void needs(std::size_t size, std::size_t least) const;
  std::string_view text(std::size_t at, std::size_t size, std::size_t fixed) const;
  void findRoom();
  std::uint32_t word(std::size_t at) const { return little32(bytes_, at); }
  [[noreturn]] void malformed(const std::string& how) const;

  View bytes_;
  Slice& slice_;
  std::string what_;
  std::size_t commandsEnd_ = 0;
  std::uint64_t lowest_;     // where the first thing lies that is neither header nor command
  std::uint32_t number_ = 0; // of the command at hand, from 1
};

} // namespace qvwrap

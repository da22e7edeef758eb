#include "Inputs.h"

#include <fstream>
#include <iterator>

#include <gtest/gtest.h>

namespace fs = std::filesystem;

namespace inputs {

Bytes contentOf(const fs::path& file) {
  std::ifstream stream(file, std::ios::binary);
  EXPECT_TRUE(stream) << file;
  return {std::istreambuf_iterator<char>(stream), {}};
}

fs::path folder() { return INPUTS; }
Bytes executable(const std::string& name) { return contentOf(folder() / name); }
std::string xcframework() { return folder() / "QVSandbox.xcframework"; }

std::string infoPlist(const std::string& executable) {
  return R"(<?xml version="1.0" encoding="UTF-8"?>
<plist version="1.0">
<dict>
  <key>CFBundleExecutable</key>
  <string>)" +
         executable + R"(</string>
  <key>CFBundleIdentifier</key>
  <string>com.example.notes</string>
</dict>
</plist>
)";
}

void write(const fs::path& file, View content) {
  fs::create_directories(file.parent_path());
  std::ofstream(file, std::ios::binary)
      .write(reinterpret_cast<const char*>(content.data()), static_cast<std::streamsize>(content.size()));
}

void write(const fs::path& file, const std::string& content) { write(file, qvwrap::viewOf(content)); }

fs::path app(const fs::path& parent, View executable) {
  const fs::path app = parent / "Notes.app";
  write(app / "Info.plist", infoPlist("Notes"));
  write(app / "Notes", executable);
  write(app / "en.lproj/Main.strings", "\"title\" = \"Notes\";\n");
  fs::permissions(app / "Notes", fs::perms(0755));
  return app;
}

std::map<std::string, std::string> snapshot(const fs::path& folder) {
  std::map<std::string, std::string> all;
  for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder)) {
    const fs::file_status status = entry.symlink_status();
    std::string text = std::to_string(static_cast<int>(status.type())) + " " +
                       std::to_string(static_cast<unsigned>(status.permissions())) + " ";
    if (fs::is_symlink(status)) {
      text += fs::read_symlink(entry.path()).string();
    } else if (fs::is_regular_file(status)) {
      text += qvwrap::textOf(contentOf(entry.path()));
    }
    all[entry.path().lexically_relative(folder)] = text;
  }
  return all;
}

Ended runQvwrap(std::vector<std::string> arguments) {
  arguments.insert(arguments.begin(), QVWRAP);
  return runProgram(arguments);
}

std::string loadCommands(const fs::path& executable) {
  const Ended ended = runProgram({OBJDUMP, "--macho", "--private-headers", "--arch", "all", executable});
  EXPECT_EQ(ended.status, 0) << ended.err;
  EXPECT_EQ(ended.err, "");
  return ended.out;
}

void setWord(Bytes& file, std::size_t at, std::uint32_t value) {
  for (std::size_t i = 0; i < 4; ++i) {
    file.at(at + i) = static_cast<std::uint8_t>(value >> 8 * i);
  }
}

std::uint32_t wordAt(View file, std::size_t at) {
  return static_cast<std::uint32_t>(file[at] | file[at + 1] << 8 | file[at + 2] << 16) |
         static_cast<std::uint32_t>(file[at + 3]) << 24;
}

std::size_t commandAt(View file, std::uint32_t kind) {
  std::size_t at = 32;
  for (std::uint32_t left = wordAt(file, 16); left > 0; --left) {
    if (wordAt(file, at) == kind) {
      return at;
    }
    at += wordAt(file, at + 4);
  }
  ADD_FAILURE() << "no load command of kind " << kind;
  return 0;
}

void leaveRoom(Bytes& file, std::size_t room) {
  const std::size_t end = 32 + wordAt(file, 20);
  std::size_t free = 0;
  while (file[end + free] == 0) {
    ++free;
  }
  // What follows the commands of these executables is code at a multiple of 8.
  free = free / 8 * 8;
  ASSERT_GE(free, room + 8);
  const auto size = static_cast<std::uint32_t>(free - room);
  setWord(file, end, 0x7fff);
  setWord(file, end + 4, size);
  setWord(file, 16, wordAt(file, 16) + 1);
  setWord(file, 20, wordAt(file, 20) + size);
}

static void appendBig(Bytes& file, std::size_t value) {
  for (int shift = 24; shift >= 0; shift -= 8) {
    file.push_back(static_cast<std::uint8_t>(value >> shift));
  }
}

Bytes universal(const std::vector<Bytes>& parts) {
  constexpr std::size_t kAlignment = 0x4000;
  Bytes file;
  appendBig(file, 0xcafebabe);
  appendBig(file, parts.size());
  std::size_t offset = kAlignment;
  for (const Bytes& part : parts) {
    appendBig(file, wordAt(part, 4));
    appendBig(file, wordAt(part, 8));
    appendBig(file, offset);
    appendBig(file, part.size());
    appendBig(file, 14);
    offset += (part.size() + kAlignment - 1) / kAlignment * kAlignment;
  }
  for (const Bytes& part : parts) {
    file.resize((file.size() + kAlignment - 1) / kAlignment * kAlignment);
    file.insert(file.end(), part.begin(), part.end());
  }
  return file;
}

Bytes armv7() {
  Bytes file(4096);
  setWord(file, 0, 0xfeedface);
  setWord(file, 4, 12);
  setWord(file, 8, 9);
  setWord(file, 12, 2);
  return file;
}

} // namespace inputs

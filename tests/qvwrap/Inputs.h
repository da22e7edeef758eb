#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "Bytes.h"
#include "Program.h"

namespace inputs {

using qvwrap::Bytes;
using qvwrap::View;

/// The content of a file.
Bytes contentOf(const std::filesystem::path& file);

/// One of the executables that inputs.sh makes.
Bytes executable(const std::string& name);
/// The folder that inputs.sh fills.
std::filesystem::path folder();
/// The xcframework that inputs.sh makes.
std::string xcframework();

/// What an Info.plist of an app looks like, with this executable.
std::string infoPlist(const std::string& executable);

/// Writes a file, with folders as needed.
void write(const std::filesystem::path& file, View content);
void write(const std::filesystem::path& file, const std::string& content);

/// An app Notes.app in `parent`, with its executable, Notes, and a resource; answers its path.
std::filesystem::path app(const std::filesystem::path& parent, View executable);

/// All that a folder holds: path, kind, permissions, content or target of each entry.
std::map<std::string, std::string> snapshot(const std::filesystem::path& folder);

/// Runs qvwrap with these arguments.
Ended runQvwrap(std::vector<std::string> arguments);
/// What llvm-objdump says of an executable's load commands.
std::string loadCommands(const std::filesystem::path& executable);

/// Changes a thin 64-bit executable: a word at an offset; the first load command of a kind.
void setWord(Bytes& file, std::size_t at, std::uint32_t value);
std::uint32_t wordAt(View file, std::size_t at);
std::size_t commandAt(View file, std::uint32_t kind);
/// Adds a load command without meaning that leaves `room` bytes behind it, out of the free bytes that there are.
void leaveRoom(Bytes& file, std::size_t room);

/// A universal file of these parts, each at a multiple of 16 KiB, as lipo lays it out.
Bytes universal(const std::vector<Bytes>& parts);
/// A 32-bit executable for armv7, of nothing but a header.
Bytes armv7();

} // namespace inputs

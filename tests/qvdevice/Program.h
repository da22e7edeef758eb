#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

/// How a program ended, and what it said.
struct Ended {
  int status;      // 128+n for signal n
  std::string out; // standard output
  std::string err; // standard error
};

/// Runs a program to its end; the first argument is its path. `environment` holds NAME=VALUE to add.
Ended runProgram(const std::vector<std::string>& arguments, const std::vector<std::string>& environment = {});

/// Runs qvdevice with these arguments.
Ended qvdevice(std::vector<std::string> arguments, const std::vector<std::string>& environment = {});

std::vector<std::string> linesOf(const std::string& text);
/// The objects of an output with one JSON object a line; the test fails when a line is none.
std::vector<nlohmann::json> objectsOf(const std::string& text);
/// Those of one kind.
std::vector<nlohmann::json> objectsOf(const std::string& text, const std::string& kind);

/// A folder that a test works in, removed with the test.
class WorkFolder {
public:
  WorkFolder();
  ~WorkFolder();
  WorkFolder(const WorkFolder&) = delete;
  WorkFolder& operator=(const WorkFolder&) = delete;

  const std::filesystem::path& path() const { return path_; }
  /// Writes a file and answers its path.
  std::string write(const std::string& name, const std::string& text) const;
  /// Compiles a source text to an app and answers the bundle's path.
  std::string app(const std::string& name, const std::string& source) const;

private:
  std::filesystem::path path_;
};

/// An app of one file that nobody here has seen before: `launch` is the body of its didFinishLaunching.
std::string appSource(const std::string& launch);

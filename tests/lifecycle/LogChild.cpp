#include "LogChild.h"

#include <algorithm>
#include <fstream>
#include <regex>
#include <sstream>

#include <fcntl.h>
#include <unistd.h>

#include <nlohmann/json.hpp>

namespace fs = std::filesystem;

namespace {

Lines linesOf(const std::string& output) {
  Lines lines;
  std::istringstream stream(output);
  for (std::string line; std::getline(stream, line);) {
    if (!line.starts_with('\x1e')) {
      lines.push_back(line);
      continue;
    }
    auto event = nlohmann::json::parse(line.substr(1));
    const std::string kind = event["kind"];
    if (kind == "log") {
      lines.push_back(std::to_string(event["level"].get<int>()) + " " + event["text"].get<std::string>());
    } else if (kind == "output") {
      lines.push_back("output " + event["text"].get<std::string>());
    } else if (kind == "sdk" && event["call"] == "setLoggingToFileSuspended:") {
      for (const char* key : {"kind", "call", "t"}) {
        event.erase(key);
      }
      lines.push_back("sdk setLoggingToFileSuspended: " + (event.size() == 1 ? event.begin()->dump() : event.dump()));
    }
  }
  return lines;
}

bool ofOtherParts(const std::string& line) {
  return line.starts_with("3 Sandboxing ") || line.starts_with("2 Sandboxing application ");
}

} // namespace

void takeAsStandardError(const std::string& path) {
  const int descriptor = open(path.c_str(), O_WRONLY | O_CREAT | O_APPEND, 0600);
  dup2(descriptor, STDERR_FILENO);
  close(descriptor);
}

void LogCapture::SetUp() {
  container = fs::canonical(freshFolder());
  fs::create_directories(container + "/Documents");
  original = container + "/Documents/original";
}

Lines LogCapture::run(const Lines& words, const std::function<void()>& prepare, int status) {
  Lines command{LOG_HOST};
  command.insert(command.end(), words.begin(), words.end());
  result = runChild(command,
                    {{"QVDEVICE_CONTAINER", container},
                     {"QVDEVICE_TRACE_FD", "1"},
                     {"LD_PRELOAD", LIBRARY},
                     // A sanitizer's symbolizer would be given the library, too.
                     {"ASAN_OPTIONS", "symbolize=0"}},
                    prepare);
  EXPECT_EQ(result.status, status) << result.output << result.errors;
  static const std::regex kCapture(R"(/[^ ]*/Library/Logs/Zorbel/sandbox_[-0-9T.]*Z\.log)");
  Lines lines;
  for (const std::string& line : linesOf(result.output)) {
    if (!ofOtherParts(line)) {
      lines.push_back(std::regex_replace(line, kCapture, "<capture>"));
    }
  }
  return lines;
}

Lines LogCapture::runIntoFile(const Lines& words) {
  return run(words, [this] { takeAsStandardError(original); });
}

std::vector<std::string> LogCapture::captures() const {
  std::vector<std::string> files;
  std::error_code none;
  for (const auto& entry : fs::directory_iterator(logs(), none)) {
    if (entry.path().filename().string().starts_with("sandbox_")) {
      files.push_back(entry.path());
    }
  }
  std::sort(files.begin(), files.end());
  return files;
}

void LogCapture::write(const std::string& path, const std::string& text) {
  std::ofstream(path, std::ios::binary) << text;
}

std::string LogCapture::content(const std::string& path) {
  std::ostringstream text;
  text << std::ifstream(path, std::ios::binary).rdbuf();
  return text.str();
}

Lines afterLoad(const Lines& more) {
  Lines lines{"2 [ZorbelWrapper] Starting logs interception.", "sdk setLoggingToFileSuspended: true"};
  lines.insert(lines.end(), more.begin(), more.end());
  return lines;
}

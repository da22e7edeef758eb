// A small app in a process of its own, watched and commanded from outside: UIApplicationMain never returns.
#pragma once

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <poll.h>
#include <sstream>
#include <string>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

using Lines = std::vector<std::string>;

class RunningApp {
public:
  // `environment` is added to the test's own.
  explicit RunningApp(const char* program, std::vector<std::string> environment = {}) {
    int output[2], control[2];
    EXPECT_EQ(pipe(output), 0);
    EXPECT_EQ(socketpair(AF_UNIX, SOCK_STREAM, 0, control), 0);
    std::string container = std::string(std::getenv("QVDEVICE_CONTAINER")) + "/tmp/app-XXXXXX";
    EXPECT_NE(mkdtemp(container.data()), nullptr);
    child_ = fork();
    if (child_ == 0) {
      dup2(output[1], 1);
      dup2(output[1], 2);
      dup2(control[1], 3);
      dup2(output[1], 4);
      for (int descriptor = 5; descriptor < 64; ++descriptor)
        close(descriptor);
      setenv("QVDEVICE_CONTAINER", container.c_str(), 1);
      setenv("QVDEVICE_CONTROL_FD", "3", 1);
      setenv("QVDEVICE_TRACE_FD", "4", 1);
      for (std::string& each : environment)
        putenv(each.data());
      execl(program, program, static_cast<char*>(nullptr));
      _exit(127);
    }
    close(output[1]);
    close(control[1]);
    output_ = output[0];
    control_ = control[0];
  }

  ~RunningApp() {
    if (child_ > 0) {
      kill(child_, SIGKILL);
      waitpid(child_, nullptr, 0);
    }
    close(output_);
    close(control_);
  }

  // What the app said until it said `last`, traces left out.
  std::vector<std::string> until(const std::string& last) {
    std::vector<std::string> lines;
    for (;;) {
      std::string line;
      if (!nextLine(output_, buffer_, line)) {
        ADD_FAILURE() << "the app never said \"" << last << "\"";
        return lines;
      }
      if (!line.empty() && line[0] == '\x1e') {
        traces_.push_back(line.substr(1));
        continue;
      }
      lines.push_back(line);
      if (line == last) return lines;
    }
  }

  // What the app said until it ended.
  std::vector<std::string> rest() {
    std::vector<std::string> lines;
    std::string line;
    while (nextLine(output_, buffer_, line)) {
      if (!line.empty() && line[0] == '\x1e')
        traces_.push_back(line.substr(1));
      else
        lines.push_back(line);
    }
    return lines;
  }

  // Sends a command and gives its answer, "ok" first; a bare word stands for a command without arguments.
  std::string command(const std::string& verbOrObject) {
    const bool object = verbOrObject.find('{') == 0;
    const std::string line = (object ? verbOrObject : "{\"do\":\"" + verbOrObject + "\"}") + "\n";
    EXPECT_EQ(write(control_, line.data(), line.size()), static_cast<ssize_t>(line.size()));
    std::string answer;
    EXPECT_TRUE(nextLine(control_, answers_, answer));
    const auto read = nlohmann::json::parse(answer);
    result_ = read.contains("result") ? read.at("result").dump() : "";
    nlohmann::ordered_json inOrder = {{"ok", read.at("ok")}};
    if (read.contains("error")) inOrder["error"] = read.at("error");
    return inOrder.dump();
  }

  // What the last command brought back; empty for nothing.
  const std::string& result() const { return result_; }

  // The processor time that the app has used, in hundredths of a second.
  long processorTicks() const {
    std::ifstream file("/proc/" + std::to_string(child_) + "/stat");
    const std::string line((std::istreambuf_iterator<char>(file)), {});
    std::istringstream fields(line.substr(line.rfind(')') + 2));
    std::string skipped;
    for (int field = 3; field < 14; ++field)
      fields >> skipped;
    long user = 0, system = 0;
    fields >> user >> system;
    return user + system;
  }

  int end() {
    int status = 0;
    EXPECT_EQ(waitpid(child_, &status, 0), child_);
    child_ = 0;
    return status;
  }

  // The lifecycle events that were traced so far.
  std::vector<std::string> events() const {
    std::vector<std::string> found;
    for (const std::string& line : traces_)
      if (const auto trace = nlohmann::json::parse(line); trace.at("kind") == "lifecycle")
        found.push_back(trace.at("event").get<std::string>());
    return found;
  }

  // What was traced of the user's and other apps' doings so far, without the time.
  std::vector<std::string> inputs() const { return traced("input"); }

  // What was traced of a kind so far, without kind and time.
  std::vector<std::string> traced(const std::string& kind) const {
    std::vector<std::string> found;
    for (const std::string& line : traces_) {
      auto trace = nlohmann::ordered_json::parse(line);
      if (trace.at("kind") != kind) continue;
      trace.erase("kind");
      trace.erase("t");
      found.push_back(trace.dump());
    }
    return found;
  }

  // The changes of protection classes that were traced so far.
  std::vector<std::string> protections() const {
    std::vector<std::string> found;
    for (const std::string& line : traces_)
      if (const auto trace = nlohmann::json::parse(line); trace.at("kind") == "protection")
        found.push_back(trace.at("path").get<std::string>() + " " + trace.at("from").dump() + " -> " +
                        trace.at("to").dump());
    return found;
  }

private:
  static bool nextLine(int descriptor, std::string& buffer, std::string& line) {
    for (;;) {
      if (const size_t end = buffer.find('\n'); end != std::string::npos) {
        line = buffer.substr(0, end);
        buffer.erase(0, end + 1);
        return true;
      }
      pollfd ready = {descriptor, POLLIN, 0};
      if (poll(&ready, 1, 20'000) <= 0) return false;
      char bytes[4096];
      const ssize_t length = read(descriptor, bytes, sizeof bytes);
      if (length <= 0) return false;
      buffer.append(bytes, static_cast<size_t>(length));
    }
  }

  pid_t child_ = 0;
  int output_ = -1;
  int control_ = -1;
  std::string buffer_, answers_, result_;
  std::vector<std::string> traces_;
};

inline const std::string ok = "{\"ok\":true}";

inline std::string refusal(const std::string& reason) {
  return nlohmann::ordered_json{{"ok", false}, {"error", reason}}.dump();
}

#include "ConsoleProcess.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <thread>

#include <fcntl.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;
using Json = nlohmann::json;

static constexpr auto kPatience = 60s;

ConsoleProcess::ConsoleProcess(std::vector<std::string> arguments) {
  arguments.insert(arguments.begin(), {QVDEVICE, "console", "--json"});
  errorFile_ = std::filesystem::temp_directory_path() / "qvdevice-test.XXXXXX";
  const int error = mkstemp(errorFile_.data());
  std::array<int, 2> output{};
  if (error < 0 || pipe2(output.data(), O_CLOEXEC) != 0) {
    return;
  }
  pid_ = fork();
  if (pid_ == 0) {
    setpgid(0, 0);
    dup2(output[1], STDOUT_FILENO);
    dup2(error, STDERR_FILENO);
    setenv("ASAN_OPTIONS", "symbolize=0:log_path=stdout", 1);
    std::vector<char*> list;
    for (std::string& argument : arguments) {
      list.push_back(argument.data());
    }
    list.push_back(nullptr);
    execv(list.front(), list.data());
    _exit(127);
  }
  close(error);
  close(output[1]);
  output_ = output[0];
  reader_ = std::jthread([this](const std::stop_token& stop) { collectOutput(stop); });
  const std::string address = until("kind", "console").value("address", "http://127.0.0.1:1/x/");
  const std::size_t slash = address.find('/', 7);
  origin_ = address.substr(0, slash);
  base_ = address.substr(slash);
  client_ = std::make_unique<httplib::Client>("127.0.0.1", std::stoi(origin_.substr(origin_.rfind(':') + 1)));
  client_->set_read_timeout(kPatience);
}

ConsoleProcess::~ConsoleProcess() {
  client_.reset();
  if (pid_ > 0) {
    kill(pid_, SIGKILL);
    waitpid(pid_, nullptr, 0);
  }
  reader_ = {};
  close(output_);
  std::filesystem::remove(errorFile_);
}

void ConsoleProcess::collectOutput(const std::stop_token& stop) {
  std::array<char, 65536> bytes;
  while (!stop.stop_requested()) {
    pollfd ready{output_, POLLIN, 0};
    if (poll(&ready, 1, 100) < 1) {
      continue;
    }
    const ssize_t length = read(output_, bytes.data(), bytes.size());
    const std::lock_guard locked(lock_);
    buffer_.append(bytes.data(), static_cast<std::size_t>(std::max<ssize_t>(length, 0)));
    closed_ = length <= 0;
    grown_.notify_all();
    if (closed_) {
      return;
    }
  }
}

Json ConsoleProcess::until(const std::string& key, const Json& value) {
  const auto deadline = Clock::now() + kPatience;
  std::unique_lock locked(lock_);
  for (;;) {
    for (std::size_t end = buffer_.find('\n'); end != std::string::npos; end = buffer_.find('\n')) {
      const Json record = Json::parse(buffer_.substr(0, end), nullptr, false);
      buffer_.erase(0, end + 1);
      if (record.is_object() && record.contains(key) && record[key] == value) {
        return record;
      }
    }
    const auto more = [this] { return closed_ || buffer_.find('\n') != std::string::npos; };
    if (!grown_.wait_until(locked, deadline, more) || buffer_.find('\n') == std::string::npos) {
      return nullptr;
    }
  }
}

Json ConsoleProcess::untilState(const std::string& state) {
  const std::string wanted = R"("kind":"status","state":")" + state + '"';
  std::string text;
  Json found;
  const auto deadline = Clock::now() + kPatience;
  client_->Get(base_ + "records", [&](const char* data, std::size_t length) {
    text.append(data, length);
    for (std::size_t end = text.find("\n\n"); end != std::string::npos; end = text.find("\n\n")) {
      const std::string event = text.substr(0, end);
      text.erase(0, end + 2);
      if (event.find(wanted) != std::string::npos) {
        found = Json::parse(event.substr(event.find("data: ") + 6), nullptr, false);
      }
    }
    return found.is_null() && Clock::now() < deadline;
  });
  return found;
}

std::pair<int, std::string> ConsoleProcess::post(const std::string& path, const std::string& body) {
  const auto answer = client_->Post(base_ + path, {{"Origin", origin_}}, body, "application/json");
  return answer ? std::pair(answer->status, answer->body) : std::pair(0, std::string());
}

std::pair<int, std::string> ConsoleProcess::happen(const std::string& event) {
  return post("events", Json{{"event", event}}.dump());
}

int ConsoleProcess::wait() {
  int status = 0;
  for (const auto deadline = Clock::now() + kPatience; Clock::now() < deadline;) {
    if (waitpid(pid_, &status, WNOHANG) == pid_) {
      pid_ = -1;
      return WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status);
    }
    std::this_thread::sleep_for(10ms);
  }
  return -1;
}

std::string ConsoleProcess::error() const {
  std::ostringstream text;
  text << std::ifstream(errorFile_).rdbuf();
  return text.str();
}

#pragma once

#include <condition_variable>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include <sys/types.h>

#include <httplib.h>
#include <nlohmann/json.hpp>

/// `qvdevice console` while it runs, and what a page does to it. Killed with this object when it still does.
class ConsoleProcess {
public:
  explicit ConsoleProcess(std::vector<std::string> arguments);
  ~ConsoleProcess();
  ConsoleProcess(const ConsoleProcess&) = delete;
  ConsoleProcess& operator=(const ConsoleProcess&) = delete;

  pid_t pid() const { return pid_; }

  /// Reads what it says until a record has `key` with `value`; that record, or null when there is none in time.
  nlohmann::json until(const std::string& key, const nlohmann::json& value);
  /// Reads until a page is told of a status with this state.
  nlohmann::json untilState(const std::string& state);

  /// Lets an event happen: the status of the reply, and its body.
  std::pair<int, std::string> happen(const std::string& event);
  std::pair<int, std::string> post(const std::string& path, const std::string& body);

  /// Its exit status, 128+n for signal n; -1 when it does not end.
  int wait();
  /// Its standard error, once it has ended.
  std::string error() const;

private:
  void collectOutput(const std::stop_token& stop);

  pid_t pid_ = -1;
  int output_ = -1;
  std::string errorFile_;
  std::mutex lock_;
  std::condition_variable_any grown_;
  std::string buffer_; // what it has said and nobody has looked at
  bool closed_ = false;
  std::string origin_;
  std::string base_;
  std::unique_ptr<httplib::Client> client_;
  std::jthread reader_; // always reads: a console whose output nobody takes does nothing else any more
};

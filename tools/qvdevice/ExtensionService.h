#pragma once

#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <nlohmann/json.hpp>

#include "Child.h"
#include "Container.h"

namespace qvdevice {

/// The part of the system that starts app extensions: an app asks over a socket, and the extension runs in a process
/// and a container of its own, which the app could not start, confined as it is. The process ends when the app closes
/// its connection, at the latest with this object. Everything happens in `serve`.
///
/// The connection is a SOCK_SEQPACKET socket of this user's. The app sends one packet, {"identifier": ..., "settings":
/// ...}, with a descriptor for the extension to answer through; the answer is {"pid": ...} or {"error": ...}, and later
/// {"ended": how}.
class ExtensionService {
public:
  /// `device` is the folder of the device whose apps' extensions are started; `descriptors` are given to each.
  /// Throws std::system_error.
  ExtensionService(std::filesystem::path device, std::vector<std::pair<int, int>> descriptors);
  ~ExtensionService();
  ExtensionService(const ExtensionService&) = delete;
  ExtensionService& operator=(const ExtensionService&) = delete;

  /// What an app finds it by (QVDEVICE_EXTENSIONS).
  const std::string& address() const { return address_; }

  /// Readable when there is something to serve.
  int descriptor() const { return epoll_; }
  /// Does what is to be done now; never waits.
  void serve();

  /// The process that was started last, of those that run; 0 when none does.
  pid_t newest() const;
  /// Tells an extension's process to do something; false when it runs no longer.
  bool tell(pid_t extension, const nlohmann::ordered_json& command);
  /// The line that it answered what it was told last with, once it is there.
  std::optional<std::string> answer(pid_t extension);
  /// Whether it has been told something that it has not answered yet.
  bool owesAnswer(pid_t extension);
  void kill(pid_t extension);

private:
  struct Running;

  void accept();
  void heard(int connection);
  void start(int connection, const std::string& request, int channel);
  pid_t launch(const std::string& identifier, const std::optional<std::string>& settings, int channel, int connection);
  void readAnswers(Running& running);
  void end(const Running& running);
  Running* runningWith(int descriptor);
  Running* runningAs(pid_t extension);
  const std::filesystem::path& containerOf(const std::string& identifier);
  void watch(int descriptor);
  void close(int descriptor);

  std::filesystem::path device_;
  std::vector<std::pair<int, int>> descriptors_;
  std::string address_;
  int epoll_ = -1;
  int listener_ = -1;
  /// An extension keeps its container as long as this object lives.
  std::map<std::string, TemporaryContainer> containers_;
  std::vector<std::unique_ptr<Running>> running_;
};

} // namespace qvdevice

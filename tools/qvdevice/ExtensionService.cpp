#include "ExtensionService.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <stdexcept>
#include <system_error>

#include <sys/epoll.h>
#include <sys/random.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include "Answers.h"
#include "Failure.h"
#include "Installation.h"
#include "InstalledApps.h"

namespace qvdevice {

namespace {

using Json = nlohmann::json;

constexpr int kControlDescriptor = 4;
constexpr int kChannelDescriptor = 5;
constexpr std::size_t kLongestRequest = 65536;

[[noreturn]] void fail(const char* what) { throw std::system_error(errno, std::generic_category(), what); }

/// A name that nobody else comes upon, in the kernel's own space of names: no file is left behind.
std::string freshAddress() {
  std::array<unsigned char, 8> random{};
  if (getrandom(random.data(), random.size(), 0) != static_cast<ssize_t>(random.size())) {
    fail("no random name for the extensions' socket");
  }
  std::string name = "qvdevice." + std::to_string(getpid()) + ".";
  for (const unsigned char byte : random) {
    name += "0123456789abcdef"[byte >> 4];
    name += "0123456789abcdef"[byte & 15];
  }
  return name;
}

int listenAt(const std::string& name) {
  const int listener = socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  std::memcpy(address.sun_path + 1, name.data(), name.size());
  const auto length = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + 1 + name.size());
  if (listener < 0 || bind(listener, reinterpret_cast<const sockaddr*>(&address), length) != 0 ||
      listen(listener, SOMAXCONN) != 0) {
    fail("no socket for extensions");
  }
  return listener;
}

bool isThisUsers(int connection) {
  ucred peer{};
  socklen_t length = sizeof peer;
  return getsockopt(connection, SOL_SOCKET, SO_PEERCRED, &peer, &length) == 0 && peer.uid == geteuid();
}

void say(int connection, const Json& answer) {
  const std::string text = answer.dump(-1, ' ', false, Json::error_handler_t::replace);
  // Whoever asked may be gone, or not listening; that is no reason to wait.
  (void)!send(connection, text.data(), text.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
}

/// What one packet says, and the descriptor that came with it, or -1.
struct Packet {
  ssize_t length = -1;
  std::string text;
  int descriptor = -1;
};

Packet receive(int connection) {
  Packet packet;
  packet.text.resize(kLongestRequest);
  alignas(cmsghdr) std::array<char, CMSG_SPACE(sizeof(int))> control{};
  iovec part{packet.text.data(), packet.text.size()};
  msghdr message{};
  message.msg_iov = &part;
  message.msg_iovlen = 1;
  message.msg_control = control.data();
  message.msg_controllen = control.size();
  packet.length = recvmsg(connection, &message, MSG_DONTWAIT | MSG_CMSG_CLOEXEC);
  packet.text.resize(packet.length > 0 ? static_cast<std::size_t>(packet.length) : 0);
  const cmsghdr* header = packet.length > 0 ? CMSG_FIRSTHDR(&message) : nullptr;
  if (header != nullptr && header->cmsg_level == SOL_SOCKET && header->cmsg_type == SCM_RIGHTS &&
      header->cmsg_len == CMSG_LEN(sizeof(int))) {
    std::memcpy(&packet.descriptor, CMSG_DATA(header), sizeof(int));
  }
  return packet;
}

std::string inWords(int status) {
  return WIFSIGNALED(status)
             ? "by signal " + std::to_string(WTERMSIG(status)) + " (" + strsignal(WTERMSIG(status)) + ")"
             : "with status " + std::to_string(WEXITSTATUS(status));
}

} // namespace

/// A process that serves a request, and the descriptors that belong to it.
struct ExtensionService::Running {
  Running(const Launch& launch, int theConnection, int theControl)
      : child(launch), connection(theConnection), control(theControl) {}

  Child child;
  int connection;
  int control;
  int process = -1; // ready when it has ended
  Answers answers;
};

ExtensionService::ExtensionService(std::filesystem::path device, std::vector<std::pair<int, int>> descriptors)
    : device_(std::move(device)), descriptors_(std::move(descriptors)), address_(freshAddress()),
      epoll_(epoll_create1(EPOLL_CLOEXEC)) {
  if (epoll_ < 0) {
    fail("epoll");
  }
  listener_ = listenAt(address_);
  watch(listener_);
}

ExtensionService::~ExtensionService() {
  while (!running_.empty()) {
    end(*running_.back());
  }
  ::close(listener_);
  ::close(epoll_);
}

void ExtensionService::watch(int descriptor) {
  epoll_event event{};
  event.events = EPOLLIN;
  event.data.fd = descriptor;
  if (epoll_ctl(epoll_, EPOLL_CTL_ADD, descriptor, &event) != 0) {
    fail("epoll");
  }
}

void ExtensionService::close(int descriptor) {
  // Asked for by name: a copy that a child got before it became its program would keep the watch alive.
  epoll_ctl(epoll_, EPOLL_CTL_DEL, descriptor, nullptr);
  ::close(descriptor);
}

void ExtensionService::serve() {
  // One at a time: what is done for one may close what another was about.
  for (epoll_event event{}; epoll_wait(epoll_, &event, 1, 0) > 0;) {
    const int ready = event.data.fd;
    Running* const running = runningWith(ready);
    if (ready == listener_) {
      accept();
    } else if (running == nullptr || ready == running->connection) {
      heard(ready);
    } else if (ready == running->control) {
      readAnswers(*running);
    } else if (const auto status = running->child.poll()) {
      say(running->connection, {{"ended", inWords(*status)}});
      end(*running);
    }
  }
}

void ExtensionService::accept() {
  const int connection = accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK);
  if (connection < 0) {
    return;
  }
  if (isThisUsers(connection)) {
    watch(connection);
  } else {
    ::close(connection);
  }
}

void ExtensionService::heard(int connection) {
  const Packet packet = receive(connection);
  if (packet.length < 0 && (errno == EAGAIN || errno == EINTR)) {
    return;
  }
  Running* const running = runningWith(connection);
  if (packet.length > 0 && running == nullptr) {
    start(connection, packet.text, packet.descriptor);
  } else if (running != nullptr) {
    end(*running);
  } else {
    close(connection);
  }
  if (packet.descriptor >= 0) {
    ::close(packet.descriptor);
  }
}

void ExtensionService::start(int connection, const std::string& request, int channel) {
  const Json asked = Json::parse(request, nullptr, false);
  const bool understood = asked.is_object() && asked.contains("identifier") && asked["identifier"].is_string() &&
                          (!asked.contains("settings") || asked["settings"].is_string()) && channel >= 0;
  try {
    if (!understood) {
      throw Failure(kBadInput, "the request is not understood");
    }
    const auto settings =
        asked.contains("settings") ? std::optional(asked["settings"].get<std::string>()) : std::nullopt;
    say(connection, {{"pid", launch(asked["identifier"], settings, channel, connection)}});
  } catch (const std::exception& error) {
    say(connection, {{"error", error.what()}});
    close(connection);
  }
}

pid_t ExtensionService::launch(const std::string& identifier, const std::optional<std::string>& settings, int channel,
                               int connection) {
  const auto program = installedExtension(device_, identifier);
  if (!program) {
    throw Failure(kNoInput, "no installed app has an extension " + identifier);
  }
  const std::string container = std::filesystem::canonical(containerOf(identifier)).string();
  std::array<int, 2> control{};
  if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, control.data()) != 0) {
    fail("no channel to the extension");
  }
  Launch launch;
  launch.command = {program->string()};
  // Whatever an app has put into that folder: it runs confined, whether it knows of the device or not.
  launch.confinement = {container, device_.string()};
  launch.descriptors = descriptors_;
  launch.descriptors.emplace_back(control[1], kControlDescriptor);
  launch.descriptors.emplace_back(channel, kChannelDescriptor);
  launch.alone = false;
  launch.environment = {{"QVDEVICE_CONTAINER", container},
                        {"QVDEVICE_DEVICE", device_.string()},
                        {"QVDEVICE_SETTINGS", settings},
                        {"QVDEVICE_CONTROL_FD", std::to_string(kControlDescriptor)},
                        {"QVDEVICE_EXTENSION_FD", std::to_string(kChannelDescriptor)},
                        {"QVDEVICE_EXTENSIONS", std::nullopt},
                        {"QVDEVICE_TRACE_FD", std::nullopt},
                        {"QVDEVICE_LAUNCH", std::nullopt},
                        {"QVDEVICE_POLICIES", std::nullopt},
                        {"LD_LIBRARY_PATH", withOurLibrariesFirst()},
                        {"LD_PRELOAD", std::nullopt}};
  try {
    auto running = std::make_unique<Running>(launch, connection, control[0]);
    running->process = static_cast<int>(syscall(SYS_pidfd_open, running->child.pid(), 0));
    if (running->process < 0) {
      fail("pidfd_open");
    }
    watch(running->process);
    watch(running->control);
    running_.push_back(std::move(running));
  } catch (...) {
    ::close(control[0]);
    ::close(control[1]);
    throw;
  }
  ::close(control[1]);
  return running_.back()->child.pid();
}

void ExtensionService::readAnswers(Running& running) {
  std::array<char, 65536> buffer;
  const ssize_t length = recv(running.control, buffer.data(), buffer.size(), MSG_DONTWAIT);
  if (length > 0) {
    running.answers.add({buffer.data(), static_cast<std::size_t>(length)});
  } else if (length == 0 || (errno != EAGAIN && errno != EINTR)) {
    // It listens no longer; its end is seen elsewhere.
    epoll_ctl(epoll_, EPOLL_CTL_DEL, running.control, nullptr);
  }
}

/// The process goes at once, if it has not gone already.
void ExtensionService::end(const Running& running) {
  for (const int descriptor : {running.connection, running.control, running.process}) {
    close(descriptor);
  }
  running_.erase(
      std::find_if(running_.begin(), running_.end(), [&](const auto& one) { return one.get() == &running; }));
}

ExtensionService::Running* ExtensionService::runningWith(int descriptor) {
  const auto found = std::find_if(running_.begin(), running_.end(), [descriptor](const auto& one) {
    return descriptor == one->connection || descriptor == one->control || descriptor == one->process;
  });
  return found == running_.end() ? nullptr : found->get();
}

ExtensionService::Running* ExtensionService::runningAs(pid_t extension) {
  const auto found = std::find_if(running_.begin(), running_.end(),
                                  [extension](const auto& one) { return one->child.pid() == extension; });
  return found == running_.end() ? nullptr : found->get();
}

const std::filesystem::path& ExtensionService::containerOf(const std::string& identifier) {
  return containers_[identifier].path();
}

pid_t ExtensionService::newest() const { return running_.empty() ? 0 : running_.back()->child.pid(); }

bool ExtensionService::tell(pid_t extension, const nlohmann::ordered_json& command) {
  Running* const running = runningAs(extension);
  const std::string line = command.dump() + "\n";
  if (running == nullptr || send(running->control, line.data(), line.size(), MSG_NOSIGNAL | MSG_DONTWAIT) !=
                                static_cast<ssize_t>(line.size())) {
    return false;
  }
  running->answers.expect();
  return true;
}

std::optional<std::string> ExtensionService::answer(pid_t extension) {
  Running* const running = runningAs(extension);
  return running == nullptr ? std::nullopt : running->answers.take();
}

bool ExtensionService::owesAnswer(pid_t extension) {
  Running* const running = runningAs(extension);
  return running != nullptr && running->answers.isOwed();
}

void ExtensionService::kill(pid_t extension) {
  if (runningAs(extension) != nullptr) {
    ::kill(extension, SIGKILL);
  }
}

} // namespace qvdevice

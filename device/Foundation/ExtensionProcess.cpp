#include "Foundation/ExtensionProcess.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <nlohmann/json.hpp>

namespace qvdevice {

namespace {

using Json = nlohmann::json;

int connectTo(const std::string& name) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  if (name.size() >= sizeof address.sun_path) return -1;
  std::memcpy(address.sun_path + 1, name.data(), name.size());
  const auto length = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + 1 + name.size());
  const int connection = ::socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0);
  if (connection >= 0 && ::connect(connection, reinterpret_cast<const sockaddr*>(&address), length) == 0)
    return connection;
  if (connection >= 0) ::close(connection);
  return -1;
}

bool ask(int connection, const std::string& request, int descriptor) {
  std::string text = request;
  alignas(cmsghdr) std::array<char, CMSG_SPACE(sizeof(int))> control{};
  iovec part{text.data(), text.size()};
  msghdr message{};
  message.msg_iov = &part;
  message.msg_iovlen = 1;
  message.msg_control = control.data();
  message.msg_controllen = control.size();
  cmsghdr* const header = CMSG_FIRSTHDR(&message);
  header->cmsg_level = SOL_SOCKET;
  header->cmsg_type = SCM_RIGHTS;
  header->cmsg_len = CMSG_LEN(sizeof(int));
  std::memcpy(CMSG_DATA(header), &descriptor, sizeof descriptor);
  return ::sendmsg(connection, &message, MSG_NOSIGNAL) == static_cast<ssize_t>(text.size());
}

/// The next thing that the system says; null when it says nothing more.
Json heard(int connection) {
  std::array<char, 4096> buffer{};
  ssize_t length = -1;
  do {
    length = ::recv(connection, buffer.data(), buffer.size(), 0);
  } while (length < 0 && errno == EINTR);
  if (length <= 0) return nullptr;
  const Json answer = Json::parse(buffer.data(), buffer.data() + length, nullptr, false);
  return answer.is_object() ? answer : Json(nullptr);
}

} // namespace

bool startExtension(const std::string& identifier, ExtensionProcess& process, std::string& error) {
  const char* const service = std::getenv("QVDEVICE_EXTENSIONS");
  const int connection = service == nullptr ? -1 : connectTo(service);
  std::array<int, 2> channel{};
  if (connection < 0 || ::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, channel.data()) != 0) {
    error = "nobody is there to start it";
    if (connection >= 0) ::close(connection);
    return false;
  }
  Json request{{"identifier", identifier}};
  if (const char* settings = std::getenv("QVDEVICE_SETTINGS")) request["settings"] = settings;
  const bool asked = ask(connection, request.dump(-1, ' ', false, Json::error_handler_t::replace), channel[1]);
  ::close(channel[1]);
  const Json answer = asked ? heard(connection) : Json(nullptr);
  if (answer.is_object() && answer.contains("pid")) {
    process = {answer.value("pid", 0), channel[0], connection};
    return true;
  }
  error = answer.is_object() ? answer.value("error", "it gave no reason") : "whoever starts it has gone";
  ::close(channel[0]);
  ::close(connection);
  return false;
}

std::string howExtensionEnded(int connection) {
  const Json said = heard(connection);
  return said.is_object() ? said.value("ended", "") : std::string();
}

} // namespace qvdevice

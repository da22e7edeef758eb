#pragma once

#include <string>
#include <string_view>

namespace qvdevice {

/// 128 random bits in hexadecimal digits. Throws std::system_error.
std::string makeToken();

/// Who may speak to a server on this machine: one who knows its token, by its own name and not through another site's.
class Access {
public:
  /// `port` is the server's, on 127.0.0.1.
  Access(std::string token, int port) : token_(std::move(token)), port_(port) {}

  /// What a browser is given to open.
  std::string address() const;

  /// A request's Host: a name that leads here only by somebody else's doing is none of ours.
  bool isOurHost(std::string_view host) const;
  /// A request's Origin: the page that it comes from is ours.
  bool isOurOrigin(std::string_view origin) const;
  /// What follows the token in a request's path, beginning with "/"; empty when the path does not begin with the token.
  /// How long that takes says nothing about the token.
  std::string_view behindToken(std::string_view path) const;

private:
  std::string token_;
  int port_;
};

} // namespace qvdevice

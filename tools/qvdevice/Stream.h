#pragma once

#include <functional>
#include <string>
#include <string_view>

#include <nlohmann/json.hpp>

namespace qvdevice {

/// Takes apart what comes out of an app's one pipe: lines of text that the app wrote, and trace records (RFC 7464) of
/// the device, in the order in which they were written.
class Stream {
public:
  std::function<void(const std::string&)> onLine;
  std::function<void(const nlohmann::ordered_json&)> onRecord;

  void feed(std::string_view bytes);
  /// The app has ended: what it wrote without a last newline counts as a line.
  void finish();

private:
  void endLine();

  std::string pending_;
  bool inRecord_ = false;
};

} // namespace qvdevice

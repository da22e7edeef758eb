#include "ScreenPicture.h"

#include <algorithm>

namespace qvdevice {

static constexpr auto kPatience = std::chrono::seconds(2);
/// A command that is longer than a mebibyte is refused by who is told it.
static constexpr std::size_t kLargestPicture = 1'000'000;

std::optional<Answer> askForScreen(AppProcess& app, AppProcess::Clock::duration limit) {
  nlohmann::ordered_json command{{"do", "screen"}};
  if (app.extensionListens()) {
    const auto answer = app.askExtension(command, std::min<AppProcess::Clock::duration>(limit, kPatience));
    if (answer && answer->refusal.empty() && answer->result.is_object()) {
      if (const std::string png = answer->result.value("png", ""); png.size() <= kLargestPicture && !png.empty()) {
        command["extension"] = png;
      }
    }
  }
  return app.ask(command, limit);
}

} // namespace qvdevice

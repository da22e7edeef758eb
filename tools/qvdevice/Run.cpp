#include "Run.h"

#include "Container.h"
#include "Device.h"
#include "Failure.h"
#include "Terminal.h"
#include "report/HtmlReport.h"

namespace fs = std::filesystem;

namespace qvdevice {

int run(const RunOptions& options) {
  // All that can be wrong with what we were given is found before anything is made or started.
  const Bundle bundle = openBundle(options.app);
  const std::vector<Event> events = options.events ? readEvents(*options.events) : defaultEvents();
  if (options.policies && !fs::is_regular_file(*options.policies)) {
    throw Failure(kNoInput, "there is no policies file at " + options.policies->string());
  }

  std::optional<HtmlReport> html;
  if (options.report) {
    html.emplace(*options.report);
  }
  std::optional<ScreenFolder> screens;
  if (options.screens) {
    screens.emplace(*options.screens);
  }

  std::optional<TemporaryContainer> temporary;
  if (!options.container) {
    temporary.emplace();
    if (options.keep) {
      temporary->keep();
    }
  }
  const fs::path container = temporary ? fs::canonical(temporary->path()) : prepareContainer(*options.container);
  const DeviceToRunOn device(options.device, options.installed);
  const auto report = options.json ? makeJsonReport() : makeTextReport(options.verbose, wantsColour());
  const bool kept = options.keep || options.container.has_value();
  return playReported(*report, html ? &*html : nullptr,
                      [&](Report& shown) {
                        return playApp(options, bundle, container, kept, device.folder(), events, shown,
                                       screens ? &*screens : nullptr);
                      })
      .status;
}

} // namespace qvdevice

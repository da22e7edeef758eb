#pragma once

#include <optional>

#include "AppProcess.h"

namespace qvdevice {

/// Asks the app for a picture of the device's screen: {"png", "width", "height", "scale"}, or why there is none. An
/// extension that runs is asked first what it shows of itself; one that hangs is waited for only shortly, and once: its
/// place stays grey. Nothing when the app gives no answer in that time.
std::optional<Answer> askForScreen(AppProcess& app, AppProcess::Clock::duration limit);

} // namespace qvdevice

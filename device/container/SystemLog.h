#pragma once

#include <string_view>

namespace qvdevice {

/// Says something of the app: writes the text to standard error, wherever that leads, and shows it to whoever follows
/// the trace. On the phone, too, a line has two ways: standard error, and the system's own log, which nothing that is
/// done to standard error keeps anything from. Any thread; also when the process is about to be ended.
void systemLog(std::string_view text);

} // namespace qvdevice

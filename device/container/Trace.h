#pragma once

#include <nlohmann/json.hpp>

namespace qvdevice {

/// The descriptor that the trace goes to; -1 when nobody listens.
int traceDescriptor();

/// Writes one record to the trace, if somebody listens, with the time added. Any thread.
void trace(nlohmann::ordered_json record);

} // namespace qvdevice

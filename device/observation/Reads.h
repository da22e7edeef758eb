#pragma once

#include <string>

#include <nlohmann/json.hpp>

namespace qvdevice {

/// Whether a decision is open on this thread whose record somebody will read.
bool isDeciding();

/// Tells that the decision which is open on this thread, if any, has read that value. Of one that is read again, the
/// last counts.
void noteRead(const char* name, nlohmann::ordered_json value);

/// Of an object that the decision has read, only what stands under the key was wanted: null when there is nothing.
void keepOfRead(const char* name, const std::string& key);

} // namespace qvdevice

#pragma once

#import <Foundation/Foundation.h>

#include <nlohmann/json.hpp>

namespace qvdevice {

/// Property list objects and NSNull as JSON, keys sorted but for "kind", which comes first; any other object by its
/// description.
nlohmann::ordered_json jsonFrom(id object);

/// JSON as property list objects and NSNull.
id objectFrom(const nlohmann::json& value);

/// An open descriptor whose number the environment holds; -1 without one. Refuses to go on with anything else.
int descriptorFromEnvironment(const char* variable);

} // namespace qvdevice

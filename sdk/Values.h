#pragma once

#import <Foundation/Foundation.h>

#include <nlohmann/json.hpp>

namespace zorbel {

/// The property list object for a JSON value. {"base64": "..."} is data where `withData` says so.
id objectFrom(const nlohmann::json& value, bool withData);

} // namespace zorbel

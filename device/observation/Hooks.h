// The hooks of the library under test, as this process shows them: nobody tells the device which methods those are.
#pragma once

#include <objc/runtime.h>

#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include "observation/Implementations.h"

namespace qvdevice {

/// A method was added, or not because the class has one of that name.
void noteAddition(Class cls, SEL selector, IMP implementation, bool added);

/// The library tried to exchange two methods of a class; `why` when it was refused.
void noteExchange(Class cls, SEL original, SEL replacement, bool exchanged, const std::string& why);

/// What start-up has left alone becomes part of the trace, where the other hooks are already.
void traceHooksLeftAlone();

/// Each hook with "class", "selector", "classMethod", "replacement", "installer" (null when nobody knows), "state" and
/// "why" (unless it is installed), and "counter" where its calls are counted, in the order in which they were met. The
/// states:
///   installed  the library's replacement is what the selector runs
///   absent     the class has no such method, or nobody has been given it yet
///   refused    the exchange failed, or was not tried after one that failed
///   replaced   somebody has put another implementation in the place of the library's; `why` names the image
std::vector<nlohmann::ordered_json> hooks();

/// The hook whose replacement is that function, as "-[Class selector]" or "+[Class selector]"; empty when there is
/// none.
std::string hookedMethodAt(const void* function);
/// The hook whose calls have that counter, in the same way.
std::string hookedMethodOf(int counter);

} // namespace qvdevice

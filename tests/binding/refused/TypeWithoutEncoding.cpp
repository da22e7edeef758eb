#include "platform/objc/method.hpp"

#include <string>

void take(qvsb::Object, qvsb::SEL, std::string) {}
constexpr qvsb::MethodEntry entry = qvsb::method<&take>("take:");

#include "platform/objc/method.hpp"

void take(qvsb::Object, qvsb::SEL) {}
constexpr qvsb::MethodEntry entry = qvsb::method<&take>("take:");

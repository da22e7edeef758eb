#include "platform/objc/method.hpp"

void take(int, qvsb::SEL) {}
constexpr qvsb::MethodEntry entry = qvsb::method<&take>("take");

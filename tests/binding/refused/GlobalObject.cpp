#include "platform/objc/ownership.hpp"

qvsb::Strong<qvsb::Object> kept;

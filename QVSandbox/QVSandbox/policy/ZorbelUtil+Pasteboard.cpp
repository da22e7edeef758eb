#include "ZorbelUtil+Pasteboard.hpp"

namespace qvsb {

namespace {

// The guard is told of everything that it has to know, and leaves the pasteboard alone for now.

void takeSnapshot(Object, SEL) {}
void restoreSnapshot(Object, SEL) {}
void pasteboardContentChanged(Object, SEL, Object) {}

constexpr MethodEntry instanceMethods[] = {
    method<&takeSnapshot>("takeSnapshot"),
    method<&restoreSnapshot>("restoreSnapshot"),
    method<&pasteboardContentChanged>("pasteboardContentChanged:"),
};

} // namespace

constinit const Category ZorbelUtilPasteboard{"ZorbelUtil", "Pasteboard", instanceMethods, {}};

} // namespace qvsb

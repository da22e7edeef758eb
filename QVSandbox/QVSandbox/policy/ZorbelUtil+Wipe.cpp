#include "ZorbelUtil+Wipe.hpp"

namespace qvsb {

namespace {

// The steps have their place and their order, and remove nothing: a retired app keeps its data for now.

void cleanUpKeychain(Class, SEL) {}
void cleanUpPreferences(Class, SEL) {}
void cleanUpFileSystem(Class, SEL) {}

constexpr MethodEntry classMethods[] = {
    method<&cleanUpKeychain>("_cleanUpKeychain"),
    method<&cleanUpPreferences>("_cleanUpPreferences"),
    method<&cleanUpFileSystem>("_cleanUpFileSystem"),
};

} // namespace

constinit const Category ZorbelUtilWipe{"ZorbelUtil", "Wipe", {}, classMethods};

} // namespace qvsb

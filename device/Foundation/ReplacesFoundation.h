// Included by the files whose categories take the place of Foundation's own methods: Debian's Foundation is loaded
// first, and a category that arrives later wins in its runtime.
#pragma clang diagnostic ignored "-Wobjc-protocol-method-implementation"

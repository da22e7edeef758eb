// The target that the tests' precompiled headers belong to has a source of each language, and nothing to do.
int main() {}

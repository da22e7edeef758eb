// Stands in for QVSandbox's library: what qvwrap reads of it are its load commands.
extern int ZorbelVersion;

__attribute__((visibility("default"))) int QVSandboxInit(void);
int QVSandboxInit(void) { return ZorbelVersion; }

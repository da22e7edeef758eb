// What an extension's main function is: return NSExtensionMain(argc, argv). On the phone the linker names it as the
// program's start.
#pragma once

#ifdef __cplusplus
extern "C"
#endif
    int
    NSExtensionMain(int argc, char* argv[]);

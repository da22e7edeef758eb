// What the framework's users and a phone's loader count on, but for what the files on the command line say.
#pragma once

#include <string>
#include <vector>

#include "Stubs.h"
#include "Texts.h"

namespace qvcheck {

inline constexpr const char* kName = "QVSandbox";
inline constexpr const char* kIdentifier = "com.zorbel.QVSandbox";
inline constexpr const char* kVersion = "4.2.0.18";
inline constexpr const char* kShortVersion = "4.2.0";
inline constexpr const char* kInstallName = "@rpath/QVSandbox.framework/QVSandbox";

/// The initialisers in the order in which they run. The first has no name in the binary, only in the debug symbols.
inline const std::vector<std::string> kInitialisers{"(anonymous namespace)::load()", "QVSandboxInit"};

/// Loaded, and initialised, before the framework: the owners of the classes that it looks up.
inline const std::vector<std::string> kLibraries{"/System/Library/Frameworks/CoreData.framework/CoreData",
                                                 "/System/Library/Frameworks/Foundation.framework/Foundation",
                                                 "/System/Library/Frameworks/Security.framework/Security",
                                                 "/System/Library/Frameworks/UIKit.framework/UIKit",
                                                 "@rpath/Zorbel.framework/Zorbel",
                                                 "/usr/lib/libobjc.A.dylib",
                                                 "/usr/lib/libc++.1.dylib",
                                                 "/usr/lib/libSystem.B.dylib"};

/// What the files on the command line say.
struct Promises {
  std::vector<std::string> exports; ///< as the linker sees them, sorted
  Stubs stubs;
  Texts texts;
  std::string sources; ///< the folder that it was built from, which it must not name; may be empty
};

} // namespace qvcheck

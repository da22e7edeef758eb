// What several test programs need: the SDK's log as text, protection classes read past every library, fresh folders.
#pragma once

#import <Foundation/Foundation.h>

#include "Log.hpp"

#include <string>
#include <sys/types.h>
#include <vector>

namespace support {

/// The protection class stored with the item, read from its extended attribute; empty when there is none.
std::string storedClass(NSString *path);
/// Stores a class with the item the same way.
void storeClass(NSString *path, const char *protectionClass);

/// A new, empty folder in the container's tmp.
NSString *freshFolder();

/// Gives the class a method without a type encoding, as Apple's runtime lets anybody do. Gives its selector.
SEL addMethodWithoutEncoding(Class cls, const char *name);

/// The processes of an installed app's extension by the name of its program: children, as this one is, of the device
/// that runs the test. Those that have ended are not among them.
std::vector<pid_t> processesOf(const std::string &program);

std::string text(NSString *string);
bool exists(NSString *path);

} // namespace support

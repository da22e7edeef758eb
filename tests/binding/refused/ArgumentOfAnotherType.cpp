#include "platform/Foundation/NSFileManager.hpp"
#include "platform/Foundation/NSURL.hpp"

bool ask(qvsb::NSFileManager manager, qvsb::NSURL* url) { return manager.fileExistsAtPath(url); }

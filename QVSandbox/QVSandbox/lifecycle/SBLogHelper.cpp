#include "SBLogHelper.hpp"

#include <array>

#include "../platform/Foundation/NSFileManager.hpp"
#include "../platform/System/descriptor.hpp"
#include "../platform/Zorbel/ZBLogHelper.hpp"
#include "../platform/Zorbel/Zorbel.hpp"
#include "../platform/objc/implement.hpp"

namespace qvsb {

namespace {

/// The capture file's, as long as it is on standard error; -1 when none is.
constinit int sStdErrOutputFileDescriptor = -1;

// Owned. Handles and not Strong: they are needed until the process ends, and nothing of the library runs at exit.
constinit NSString sOriginalPath;
constinit NSString sCurrentLogPath;

void assign(NSString& variable, NSString value) {
  const auto before = Strong<NSString>::adopt(variable);
  variable = Strong<NSString>(value).detach();
}

// Read and written by the owner, executed too (so it has always been), read by the others.
constexpr int kMode = 0744;

class Implementation : public Implements<Implementation> {
public:
  static constexpr const char* className = "SBLogHelper";
  static constexpr const char* superclassName = "NSObject";

  static void load(Class self, SEL) {
    [[maybe_unused]] static const bool once = [self] {
      assign(sOriginalPath, send<NSString>(self, "filePathFromFile:"_sel, standardError()));
      send<void>(self, "startInterceptingLogs"_sel);
      return true;
    }();
  }

  static NSString filePathFromFile(Class, SEL, CStream* file) {
    std::array<char, kPathSize> path;
    if (!file || !pathOfDescriptor(descriptorOf(file), path)) {
      return nullptr;
    }
    return NSString::stringWithUTF8String(path.data());
  }

  static BOOL isLogInterceptionStarted(Class, SEL) {
    return sCurrentLogPath && !sCurrentLogPath.isEqual(sOriginalPath) ? YES : NO;
  }

  static void startInterceptingLogs(Class self, SEL) {
    if (sStdErrOutputFileDescriptor != -1) {
      Zorbel::wrapperLogAtLevel_format(0, "Attempted to replace STDERR output twice."_ns);
      return;
    }
    Zorbel::wrapperLogAtLevel_format(2, "[ZorbelWrapper] Starting logs interception."_ns);
    ZBLogHelper::rotateLogFiles();
    const NSString name = ZBLogHelper::appendDate_toFileName(NSDate::date(), "sandbox"_ns);
    assign(sCurrentLogPath, ZBLogHelper::createLogFileWithName(name));
    sStdErrOutputFileDescriptor =
        send<int>(self, "replaceStdErrDescriptorWithNewPath:"_sel, sCurrentLogPath.UTF8String());
    // The SDK's lines would be written twice: to its own file, and with standard error.
    Zorbel::setLoggingToFileSuspended(YES);
  }

  static void stopInterceptingLogsPreservingFile(Class self, SEL, BOOL preservingFile) {
    Zorbel::setLoggingToFileSuspended(NO);
    if (sStdErrOutputFileDescriptor != -1) {
      if (send<int>(self, "replaceStdErrDescriptorWithNewPath:"_sel, sOriginalPath.UTF8String()) == -1) {
        Zorbel::wrapperLogAtLevel_format(0, "Error resetting original STDERR."_ns);
      }
      sStdErrOutputFileDescriptor = -1;
    } else {
      Zorbel::wrapperLogAtLevel_format(0, "No file streams were found."_ns);
    }
    if (!preservingFile) {
      removeCurrentLog();
    }
  }

  static int newFileDescriptorForPath(Class, SEL, const char* path) {
    if (!path) {
      Zorbel::wrapperLogAtLevel_format(0, "Attempted to create a file at nil path."_ns);
      return -1;
    }
    return open(path, kOpenReadWrite | kOpenAppend | kOpenCreate, kMode);
  }

  // The descriptor is not closed, neither here nor later: each change leaves one more behind.
  static int replaceStdErrDescriptorWithNewPath(Class self, SEL, const char* path) {
    const int descriptor = send<int>(self, "newFileDescriptorForPath:"_sel, path);
    if (descriptor == -1) {
      const int reason = errorNumber();
      Zorbel::wrapperLogAtLevel_format(0, "Error creating file descriptor %i"_ns, reason);
      return -1;
    }
    if (duplicate(descriptor, kStandardErrorDescriptor) == -1) {
      const int reason = errorNumber();
      Zorbel::wrapperLogAtLevel_format(0, "Error intercepting file descriptor %i"_ns, reason);
    }
    return descriptor;
  }

  static constexpr MethodEntry classMethods[] = {
      method<&Implementation::load>("load"),
      method<&Implementation::filePathFromFile>("filePathFromFile:"),
      method<&Implementation::isLogInterceptionStarted>("isLogInterceptionStarted"),
      method<&Implementation::startInterceptingLogs>("startInterceptingLogs"),
      method<&Implementation::stopInterceptingLogsPreservingFile>("stopInterceptingLogsPreservingFile:"),
      method<&Implementation::newFileDescriptorForPath>("newFileDescriptorForPath:"),
      method<&Implementation::replaceStdErrDescriptorWithNewPath>("replaceStdErrDescriptorWithNewPath:"),
  };

private:
  static void removeCurrentLog() {
    NSError error;
    if (!NSFileManager::defaultManager().removeItemAtPath_error(sCurrentLogPath, &error)) {
      Zorbel::wrapperLogAtLevel_format(0, "Error removing temporary file %@"_ns, error.description());
    }
    assign(sCurrentLogPath, nullptr);
  }
};

} // namespace

Class registerSBLogHelper() { return registerClass<Implementation>(); }

} // namespace qvsb

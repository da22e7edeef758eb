#import "InstalledExtensions.h"

#include <string>

#include "container/DeviceFiles.h"
#include "container/DeviceFolder.h"

NSDictionary *QVDeviceInstalledExtension(id identifier) {
  if (![identifier isKindOfClass:[NSString class]]) return nil;
  for (const std::string &app : qvdevice::deviceFolderEntries("Apps")) {
    const std::string plugIns = "Apps/" + app + "/PlugIns";
    for (const std::string &name : qvdevice::deviceFolderEntries(plugIns)) {
      if (!name.ends_with(".appex")) continue;
      const std::string file = qvdevice::deviceFolder() + '/' + plugIns + '/' + name + "/Info.plist";
      NSDictionary *const information =
          [NSDictionary dictionaryWithContentsOfFile:[NSString stringWithUTF8String:file.c_str()]];
      if ([identifier isEqual:[information objectForKey:@"CFBundleIdentifier"]] &&
          [[information objectForKey:@"NSExtension"] isKindOfClass:[NSDictionary class]])
        return information;
    }
  }
  return nil;
}

// The extensions of the device's installed apps.
#pragma once

#import <Foundation/Foundation.h>

/// The information (Info.plist) of the extension with that bundle identifier; nil when no app's plug-ins have one.
/// Whatever is no text names none.
NSDictionary *QVDeviceInstalledExtension(id identifier);

#pragma once

#import <UIKit/UIKit.h>

/// What is on the device's screen, from behind to front: the windows by their levels, what lies over them, the system's
/// own bars; while the app is in the background, the home screen. Of an extension, its own view alone, clear where it
/// is. `extension` is what the extension that the app shows has drawn of itself; nil when it has not. Views are laid
/// out first, as before each frame. Nil, with the reason, when it cannot be drawn; what the app's own code raises
/// passes. Main thread.
UIImage *QVDeviceDrawScreen(UIApplication *application, UIImage *extension, CGFloat scale, NSString **problem);

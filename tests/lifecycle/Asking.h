// A dynamic library of the app's own, from which it asks for the application's delegate.
#import <UIKit/UIKit.h>

#ifdef __cplusplus
extern "C"
#endif
    id
    QVAskForDelegate(UIApplication* application);

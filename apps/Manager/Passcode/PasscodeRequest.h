#import <Foundation/Foundation.h>

/// Finds in a request what an app hands over for its user to be asked for the passcode: a dictionary, under a type
/// whose identifier ends in "passcodeextension.data". The handler is called on the main queue, with nil when there is
/// none.
void LoadPasscodeRequest(NSExtensionContext *context, void (^handler)(NSDictionary *request));

/// What is in a request, without what is secret in it.
NSString *InWords(NSDictionary *request);

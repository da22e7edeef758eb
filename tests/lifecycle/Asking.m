#import "Asking.h"

id QVAskForDelegate(UIApplication *application) {
  id const delegate = [application delegate];
  // Keeps the call from becoming a jump, after which this library would not be among those who called.
  __asm__ volatile("");
  return delegate;
}

#pragma once

#import <Zorbel/Zorbel.h>

#include "Policies.h"

@interface Zorbel (Changes)

/// Tells the delegate all that differs, in a fixed order; `message` goes with the authorisation state. Main thread
/// only, and the policies are those of `now` already.
- (void)tellChangesFrom:(const zorbel::Policies &)before to:(const zorbel::Policies &)now message:(NSString *)message;

@end

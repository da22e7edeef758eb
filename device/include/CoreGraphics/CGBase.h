#pragma once

#import <CoreFoundation/CFBase.h>
#import <Foundation/Foundation.h>

#define CG_EXTERN CF_EXPORT

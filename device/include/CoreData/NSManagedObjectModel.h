#pragma once

#import <Foundation/Foundation.h>

@interface NSManagedObjectModel : NSObject

+ (NSManagedObjectModel *)mergedModelFromBundles:(NSArray *)bundles;
- (instancetype)initWithContentsOfURL:(NSURL *)url;

@property (readonly) NSArray *entities;

@end

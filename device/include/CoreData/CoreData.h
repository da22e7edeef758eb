#pragma once

#import <CoreData/CoreDataErrors.h>
#import <CoreData/NSManagedObjectModel.h>
#import <CoreData/NSPersistentStore.h>
#import <CoreData/NSPersistentStoreCoordinator.h>
#import <Foundation/Foundation.h>

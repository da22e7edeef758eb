#pragma once

#import <CoreGraphics/CoreGraphics.h>
#import <Foundation/Foundation.h>
#import <UIKit/UIActivity.h>
#import <UIKit/UIApplication.h>
#import <UIKit/UIColor.h>
#import <UIKit/UIDevice.h>
#import <UIKit/UIDocument.h>
#import <UIKit/UIEvent.h>
#import <UIKit/UIKitDefines.h>
#import <UIKit/UIPasteboard.h>
#import <UIKit/UIResponder.h>
#import <UIKit/UIScreen.h>
#import <UIKit/UIView.h>
#import <UIKit/UIViewController.h>
#import <UIKit/UIWindow.h>

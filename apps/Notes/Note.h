#import <Foundation/Foundation.h>

@interface Note : NSObject <NSCoding> {
  NSString *_title;
  NSString *_body;
  NSDate *_created;
}

@property (nonatomic, copy) NSString *title;
@property (nonatomic, copy) NSString *body;
@property (nonatomic, retain) NSDate *created;

+ (Note *)noteWithTitle:(NSString *)title body:(NSString *)body;
/// The notes that a new user finds.
+ (NSArray *)samples;

- (NSDictionary *)propertyList;
- (NSData *)data;
/// The title as the start of a file name.
- (NSString *)fileName;

@end

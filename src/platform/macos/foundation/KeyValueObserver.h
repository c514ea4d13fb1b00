#pragma once

#import <Foundation/Foundation.h>

/// Calls the handler at each change of a value of the object, which it keeps, until it is invalidated.
@interface PerchlyKeyValueObserver : NSObject
- (instancetype)initWithObject:(NSObject*)object keyPath:(NSString*)keyPath handler:(void (^)(void))handler;
- (void)invalidate;
@end

#pragma once

#import <Foundation/Foundation.h>

/// The target of a control or menu row that calls a handler. AppKit holds targets weakly: somebody else keeps it.
@interface PerchlyActionTarget : NSObject
@property (nonatomic, copy) void (^handler)(void);
- (void)invoke:(id)sender;
@end

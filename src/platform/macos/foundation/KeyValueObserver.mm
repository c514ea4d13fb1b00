#import "platform/macos/foundation/KeyValueObserver.h"

@implementation PerchlyKeyValueObserver {
    NSObject* _object;
    NSString* _keyPath;
    void (^_handler)(void);
}

- (instancetype)initWithObject:(NSObject*)object keyPath:(NSString*)keyPath handler:(void (^)(void))handler
{
    self = [super init];
    _object = object;
    _keyPath = [keyPath copy];
    _handler = [handler copy];
    [object addObserver:self forKeyPath:keyPath options:NSKeyValueObservingOptionNew context:nullptr];
    return self;
}

- (void)invalidate
{
    [_object removeObserver:self forKeyPath:_keyPath];
    _object = nil;
}

- (void)observeValueForKeyPath:(NSString*)keyPath
                      ofObject:(id)object
                        change:(NSDictionary<NSKeyValueChangeKey, id>*)change
                       context:(void*)context
{
    // A copy, because the handler may let go of this object.
    void (^handler)(void) = _handler;
    handler();
}

@end

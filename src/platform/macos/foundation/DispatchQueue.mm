#include "platform/foundation/DispatchQueue.h"

#import <Foundation/Foundation.h>

namespace foundation {

void dispatchMainAsync(std::function<void()> work)
{
    dispatch_async(dispatch_get_main_queue(), ^{ work(); });
}

} // namespace foundation

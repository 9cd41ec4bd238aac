// Notifications and observed values.
#include "macos/appkit/recorder/desk.h"

#include <algorithm>

namespace tarvik::recorder {
namespace {

struct Observer {
    NSNotificationCenter* center;
    std::string name;
    Strong token;
    std::shared_ptr<void> block;
};
std::vector<Observer> waiting;

struct KeyObserver {
    id object;
    std::string path;
    NSObject* observer;
    friend bool operator==(const KeyObserver&, const KeyObserver&) = default;
};
std::vector<KeyObserver> keyObservers;

} // namespace

void post(NSNotificationCenter* center, NSNotificationName name) {
    // Those who begin to observe meanwhile are told of the next one; those who cease may still be on the way.
    const auto told = waiting;
    for (const auto& observer : told) {
        if (observer.center == center && observer.name == [name UTF8String])
            ((__bridge void (^)(NSNotification*))observer.block.get())(nil);
    }
}

std::size_t observers() { return waiting.size() + keyObservers.size(); }

void changed(NSObject* object, const char* path) {
    const auto told = keyObservers;
    for (const auto& observer : told) {
        if (observer.object == object && observer.path == path)
            [observer.observer observeValueForKeyPath:makeString(path) ofObject:object change:nil context:nullptr];
    }
}

} // namespace tarvik::recorder

using namespace tarvik::recorder;

@implementation NSNotification
@end

@implementation NSOperationQueue
+ (NSOperationQueue*)mainQueue {
    return sharedObject<NSOperationQueue>();
}
@end

@implementation NSNotificationCenter
+ (NSNotificationCenter*)defaultCenter {
    return sharedObject<NSNotificationCenter>();
}
- (id)addObserverForName:(NSNotificationName)name
                  object:(id)sender
                   queue:(NSOperationQueue*)queue
              usingBlock:(void (^)(NSNotification*))block {
    if (sender || queue != [NSOperationQueue mainQueue])
        fatal("an observer that does not hear every sender, or not on the main thread");
    NSObject* token = [[[NSObject alloc] init] autorelease];
    waiting.push_back({self, [name UTF8String], Strong(token), copiedBlock(block)});
    return token;
}
- (void)removeObserver:(id)token {
    if (std::erase_if(waiting, [&](const Observer& o) { return o.token.get() == token && o.center == self; }) != 1)
        fatal("an observer is removed that is none");
}
@end

@implementation NSObject (NSKeyValueObserving)
- (void)addObserver:(NSObject*)observer forKeyPath:(NSString*)path options:(NSUInteger)options context:(void*)context {
    (void)options;
    (void)context;
    keyObservers.push_back({self, [path UTF8String], observer});
}
- (void)removeObserver:(NSObject*)observer forKeyPath:(NSString*)path {
    if (std::erase(keyObservers, KeyObserver{self, [path UTF8String], observer}) != 1)
        fatal("an observer of a value is removed that is none");
}
- (void)observeValueForKeyPath:(NSString*)path ofObject:(id)object change:(NSDictionary*)change context:(void*)context {
    (void)path;
    (void)object;
    (void)change;
    (void)context;
    fatal("an observer that cannot be told");
}
@end

#include "macos/appkit/recorder/objects.h"

#include <objc/runtime.h>

#include <algorithm>

namespace tarvik::recorder {
namespace {

/// In the order of their making, which is what tests ask for.
struct Entry {
    id object;
    std::unique_ptr<Record> record;
};

/// Never destroyed: shared objects outlive every other static object.
std::vector<Entry>& entries() {
    static auto& all = *new std::vector<Entry>;
    return all;
}

auto find(id object) {
    return std::find_if(entries().begin(), entries().end(), [&](const Entry& e) { return e.object == object; });
}

struct Pool {
    id owner;
    std::vector<id> objects;
};
std::vector<Pool>& pools() {
    static auto& all = *new std::vector<Pool>;
    return all;
}

} // namespace

Record& record(id object) {
    const auto found = find(object);
    if (found == entries().end())
        fatal("a message to an object that is gone");
    return *found->record;
}

std::size_t liveObjects() {
    return static_cast<std::size_t>(std::count_if(entries().begin(), entries().end(), [](const Entry& e) {
        return !e.record->shared && ![e.object isKindOfClass:[NSAutoreleasePool class]];
    }));
}

std::vector<id> objectsOf(Class wanted) {
    std::vector<id> result;
    for (const auto& entry : entries()) {
        if ([entry.object isKindOfClass:wanted])
            result.push_back(entry.object);
    }
    return result;
}

std::vector<std::string>& calls() {
    static std::vector<std::string> all;
    return all;
}

} // namespace tarvik::recorder

using namespace tarvik::recorder;

@implementation NSObject
+ (instancetype)alloc {
    id object = class_createInstance(self, 0);
    entries().push_back({object, std::make_unique<Record>()});
    return object;
}
+ (Class)class {
    return self;
}
- (instancetype)init {
    return self;
}
- (instancetype)retain {
    ++record(self).references;
    return self;
}
- (void)release {
    if (--record(self).references == 0 && !record(self).shared)
        [self dealloc];
}
- (instancetype)autorelease {
    if (pools().empty())
        fatal("an object is autoreleased where no pool is: it would leak");
    record(self);
    pools().back().objects.push_back(self);
    return self;
}
- (void)dealloc {
    const auto found = find(self);
    // What the object holds goes once it is gone itself.
    const auto last = std::move(found->record);
    entries().erase(found);
    object_dispose(self);
}
- (BOOL)isEqual:(id)object {
    return self == object;
}
- (BOOL)isKindOfClass:(Class)wanted {
    for (Class own = object_getClass(self); own; own = class_getSuperclass(own)) {
        if (own == wanted)
            return YES;
    }
    return NO;
}
- (BOOL)respondsToSelector:(SEL)selector {
    return class_respondsToSelector(object_getClass(self), selector);
}
- (NSString*)description {
    return makeString(class_getName(object_getClass(self)));
}
@end

@implementation NSAutoreleasePool
- (instancetype)init {
    pools().push_back({self, {}});
    return self;
}
/// Pools that were made later and not drained go with it.
- (void)drain {
    while (true) {
        if (pools().empty())
            fatal("a pool is drained that is gone");
        const auto pool = std::move(pools().back());
        pools().pop_back();
        for (id object : pool.objects)
            [object release];
        if (pool.owner == self)
            break;
    }
    [self release];
}
@end

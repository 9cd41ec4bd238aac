// Objective-C objects that remember what they were told: counted references, and the values of their properties.
#pragma once

#include "macos/sim/objects.h"

#import <Foundation/Foundation.h>

#include <any>
#include <map>
#include <memory>
#include <string>
#include <vector>

extern "C" {
void* _Block_copy(const void* block);
void _Block_release(const void* block);
}

namespace tarvik::recorder {

using sim::fatal;

/// Holds a reference to an Objective-C object, as a property that is strong.
class Strong {
public:
    Strong() = default;
    explicit Strong(id object) : object_([object retain]) {}
    Strong(const Strong& other) : Strong(other.object_) {}
    Strong& operator=(Strong other) {
        std::swap(object_, other.object_);
        return *this;
    }
    ~Strong() { [object_ release]; }
    id get() const { return object_; }

private:
    id object_ = nil;
};

/// The same for an object of Core Foundation.
class StrongCf {
public:
    StrongCf() = default;
    explicit StrongCf(CFTypeRef object) : object_(object ? CFRetain(object) : nullptr) {}
    StrongCf(const StrongCf& other) : StrongCf(other.object_) {}
    StrongCf& operator=(StrongCf other) {
        std::swap(object_, other.object_);
        return *this;
    }
    ~StrongCf() {
        if (object_)
            CFRelease(object_);
    }
    CFTypeRef get() const { return object_; }

private:
    CFTypeRef object_ = nullptr;
};

/// A copy of a block, which lives as long as somebody holds it.
template <class Block> std::shared_ptr<void> copiedBlock(Block block) {
    return {_Block_copy(reinterpret_cast<const void*>(block)), _Block_release};
}

struct Record {
    long references = 1;
    /// One that the system keeps for ever; not counted.
    bool shared = false;
    std::map<std::string, std::any> values;
};

/// Ends the test when the object is not there any more.
Record& record(id object);

template <class T> T value(id object, const char* key) {
    const auto& values = record(object).values;
    const auto found = values.find(key);
    return found == values.end() ? T() : std::any_cast<T>(found->second);
}
template <class T> void put(id object, const char* key, T value) { record(object).values[key] = std::move(value); }

/// An object that the system keeps.
template <class T> T* sharedObject() {
    static T* const object = [] {
        T* made = [[T alloc] init];
        record(made).shared = true;
        return made;
    }();
    return object;
}

/// How many objects there are, shared ones aside.
std::size_t liveObjects();
/// The live objects of a class, in the order in which they were made.
std::vector<id> objectsOf(Class wanted);
template <class T> T* only() {
    const auto found = objectsOf([T class]);
    if (found.size() != 1)
        fatal("there are " + std::to_string(found.size()) + " objects of a class, not one");
    return found.front();
}

/// Every call of interest that some object got, in order.
std::vector<std::string>& calls();

// Values that only the system makes.
NSString* makeString(const std::string& text);
NSNumber* makeNumber(double number);
NSArray* makeArray(const std::vector<id>& elements);
NSDictionary* makeDictionary(const std::map<std::string, id>& entries);
NSDate* makeDate(double sinceEpoch);
NSError* makeError(const std::string& description);

} // namespace tarvik::recorder

// Properties, by what a setter does with its argument.
#define RECORDED_VALUE(type, getter, setter)                                                                           \
    -(type)getter {                                                                                                    \
        return tarvik::recorder::value<type>(self, #getter);                                                           \
    }                                                                                                                  \
    -(void)setter : (type)value {                                                                                      \
        tarvik::recorder::put<type>(self, #getter, value);                                                             \
    }
#define RECORDED_STRONG(type, getter, setter)                                                                          \
    -(type)getter {                                                                                                    \
        return (type)tarvik::recorder::value<tarvik::recorder::Strong>(self, #getter).get();                           \
    }                                                                                                                  \
    -(void)setter : (type)value {                                                                                      \
        tarvik::recorder::put(self, #getter, tarvik::recorder::Strong(value));                                         \
    }
#define RECORDED_CF(type, getter, setter)                                                                              \
    -(type)getter {                                                                                                    \
        return (type)(void*)tarvik::recorder::value<tarvik::recorder::StrongCf>(self, #getter).get();                  \
    }                                                                                                                  \
    -(void)setter : (type)value {                                                                                      \
        tarvik::recorder::put(self, #getter, tarvik::recorder::StrongCf(value));                                       \
    }

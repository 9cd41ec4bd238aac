// Ownership of Objective-C objects.
#pragma once

#import <Foundation/Foundation.h>

#include <utility>

namespace tarvik {

/// Holds one reference and gives it back; `T` is the pointer's type. The adapters are compiled without the compiler's
/// own reference counting: members of C++ objects are the owners here, by the same rule as for Core Foundation
/// (cf_ref.h), and what is counted on a Mac is what is counted in the tests.
template <class T> class ObjcRef {
public:
    ObjcRef() = default;
    ObjcRef(ObjcRef&& other) noexcept : object_(std::exchange(other.object_, nil)) {}
    ObjcRef& operator=(ObjcRef&& other) noexcept {
        std::swap(object_, other.object_);
        return *this;
    }
    ~ObjcRef() { [object_ release]; }

    /// Takes over the reference that `alloc`, `new` or `copy` made.
    static ObjcRef adopt(T object) {
        ObjcRef result;
        result.object_ = object;
        return result;
    }
    /// For objects that every other method returned.
    static ObjcRef retain(T object) { return adopt([object retain]); }

    operator T() const { return object_; }

private:
    T object_ = nil;
};

} // namespace tarvik

// Ownership of Core Foundation, Core Graphics and Accessibility objects.
#pragma once

#include <CoreFoundation/CoreFoundation.h>

#include <memory>
#include <utility>

namespace tarvik {

/// Holds one reference and gives it back. CFRelease(NULL) ends the process, so an empty one releases nothing.
template <class Ref> class CfRef {
public:
    CfRef() = default;
    CfRef(CfRef&& other) noexcept : ref_(std::exchange(other.ref_, nullptr)) {}
    CfRef& operator=(CfRef&& other) noexcept {
        std::swap(ref_, other.ref_);
        return *this;
    }
    ~CfRef() {
        if (ref_)
            CFRelease(ref_);
    }

    /// Takes over the reference that a function with "Create" or "Copy" in its name returned.
    static CfRef adopt(Ref ref) {
        CfRef result;
        result.ref_ = ref;
        return result;
    }

    Ref get() const { return ref_; }
    explicit operator bool() const { return ref_ != nullptr; }
    /// For functions that return a reference through a pointer; to be called while empty.
    Ref* out() { return &ref_; }

    /// The reference as a type that is known to be the right one.
    template <class Other> CfRef<Other> as() && {
        return CfRef<Other>::adopt(reinterpret_cast<Other>(std::exchange(ref_, nullptr)));
    }
    /// Hands the reference to several owners.
    std::shared_ptr<const void> share() && {
        if (!ref_)
            return nullptr;
        return {static_cast<const void*>(std::exchange(ref_, nullptr)), [](const void* ref) { CFRelease(ref); }};
    }

private:
    Ref ref_ = nullptr;
};

} // namespace tarvik

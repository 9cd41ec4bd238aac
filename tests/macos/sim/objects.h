// Objects of the simulated frameworks: counted references, and the faults that end a process on macOS.
#pragma once

#include <CoreFoundation/CoreFoundation.h>

#include <string>
#include <utility>

namespace tarvik::sim {

enum TypeId : CFTypeID {
    booleanType = 1,
    numberType,
    stringType,
    dataType,
    dictionaryType,
    eventType,
    eventSourceType,
    portType,
    loopSourceType,
    timerType,
    elementType,
    axValueType,
    inputSourceType,
};

/// Ends the test program: what would be a crash, or worse, on macOS.
[[noreturn]] void fatal(const std::string& fault);

class Object {
public:
    explicit Object(TypeId type);
    virtual ~Object();
    Object(const Object&) = delete;
    Object& operator=(const Object&) = delete;

    const TypeId type;
    long references = 1;
    /// Constants, whose references are not counted.
    bool immortal = false;
};

/// How many objects there are, constants aside.
int liveObjects();

/// The object behind a reference, which must be of that class.
template <class T> T& object(const void* reference) {
    if (!reference)
        fatal("a null reference");
    auto* found = dynamic_cast<T*>(static_cast<Object*>(const_cast<void*>(reference)));
    if (!found)
        fatal("a reference to an object of another type");
    return *found;
}

template <class Ref> Ref reference(Object* object) { return reinterpret_cast<Ref>(object); }

/// A new object, as the functions with "Create" in their names return it.
template <class T, class Ref, class... Args> Ref create(Args&&... args) {
    return reference<Ref>(new T(std::forward<Args>(args)...));
}

struct Bool : Object {
    explicit Bool(bool v) : Object(booleanType), value(v) {}
    const bool value;
};

struct Number : Object {
    explicit Number(double v) : Object(numberType), value(v) {}
    const double value;
};

struct String : Object {
    explicit String(std::u16string u) : Object(stringType), units(std::move(u)) {}
    std::u16string units;
};

std::u16string utf16(const std::string& utf8);
std::string utf8(const std::u16string& utf16);
std::string textOf(CFStringRef string);

} // namespace tarvik::sim

#import "platform/macos/user_defaults_store.h"

#import "platform/macos/ns_text.h"

#import <Foundation/Foundation.h>

#include <cmath>

namespace tarvik {
namespace {

/// More copies than this are a fault of ours.
constexpr int mostCopies = 100;

NSUserDefaults* defaults() { return [NSUserDefaults standardUserDefaults]; }

bool isA(id object, Class wanted) { return [object isKindOfClass:wanted]; }

} // namespace

std::optional<bool> UserDefaultsStore::boolean(std::string_view key) const {
    @autoreleasepool {
        id value = [defaults() objectForKey:nsString(key)];
        if (!isA(value, [NSNumber class]) && !isA(value, [NSString class]))
            return std::nullopt;
        return [value boolValue];
    }
}

std::optional<double> UserDefaultsStore::number(std::string_view key) const {
    @autoreleasepool {
        id value = [defaults() objectForKey:nsString(key)];
        double number = NAN;
        if (isA(value, [NSNumber class])) {
            number = [value doubleValue];
        } else if (isA(value, [NSString class])) {
            NSScanner* scanner = [NSScanner scannerWithString:value];
            if (![scanner scanDouble:&number] || ![scanner isAtEnd])
                return std::nullopt;
        }
        return std::isfinite(number) ? std::optional(number) : std::nullopt;
    }
}

std::optional<std::string> UserDefaultsStore::text(std::string_view key) const {
    @autoreleasepool {
        return optionalText([defaults() stringForKey:nsString(key)]);
    }
}

std::optional<std::vector<std::string>> UserDefaultsStore::textList(std::string_view key) const {
    @autoreleasepool {
        NSArray<NSString*>* strings = [defaults() stringArrayForKey:nsString(key)];
        if (!strings)
            return std::nullopt;
        std::vector<std::string> texts;
        for (NSString* string in strings)
            texts.push_back(tarvik::text(string));
        return texts;
    }
}

std::optional<std::string> UserDefaultsStore::data(std::string_view key) const {
    @autoreleasepool {
        NSData* data = [defaults() dataForKey:nsString(key)];
        if (!data)
            return std::nullopt;
        return std::string(static_cast<const char*>([data bytes]), [data length]);
    }
}

void UserDefaultsStore::setBoolean(std::string_view key, bool value) {
    @autoreleasepool {
        [defaults() setBool:value forKey:nsString(key)];
    }
}

void UserDefaultsStore::setNumber(std::string_view key, double value) {
    @autoreleasepool {
        [defaults() setDouble:value forKey:nsString(key)];
    }
}

void UserDefaultsStore::setText(std::string_view key, const std::string& value) {
    @autoreleasepool {
        [defaults() setObject:nsString(value) forKey:nsString(key)];
    }
}

void UserDefaultsStore::setTextList(std::string_view key, const std::vector<std::string>& value) {
    @autoreleasepool {
        NSMutableArray* strings = [NSMutableArray array];
        for (const auto& text : value)
            [strings addObject:nsString(text)];
        [defaults() setObject:strings forKey:nsString(key)];
    }
}

void UserDefaultsStore::setData(std::string_view key, const std::string& value) {
    @autoreleasepool {
        [defaults() setObject:[NSData dataWithBytes:value.data() length:value.size()] forKey:nsString(key)];
    }
}

bool UserDefaultsStore::setAside(std::string_view key) {
    @autoreleasepool {
        id value = [defaults() objectForKey:nsString(key)];
        if (!value)
            return true;
        const auto what = "preferences: '" + std::string(key) + "' makes no sense";
        for (int number = 1; number <= mostCopies; ++number) {
            const auto copy = std::string(key) + ".unreadable" + (number > 1 ? "." + std::to_string(number) : "");
            id kept = [defaults() objectForKey:nsString(copy)];
            if ([kept isEqual:value])
                return true;
            if (kept)
                continue;
            [defaults() setObject:value forKey:nsString(copy)];
            log_.write(what + "; it is kept as '" + copy + "'");
            return true;
        }
        log_.write(what + ", and stays since there are too many copies");
        return false;
    }
}

} // namespace tarvik

// The simulated desktop around the recording application framework, as a test sees and moves it.
#pragma once

#include "macos/appkit/recorder/objects.h"

#import <AppKit/AppKit.h>
#import <ServiceManagement/ServiceManagement.h>

#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace tarvik::recorder {

struct Display {
    /// 0 for one that does not tell.
    CGDirectDisplayID number = 1;
    /// Origin at the bottom left of the main display, which is the first.
    CGRect frame;
    double scale = 1;
};

struct Application {
    pid_t process = 0;
    std::optional<std::string> identifier;
    std::optional<std::string> name;
    NSApplicationActivationPolicy policy = NSApplicationActivationPolicyRegular;
};

struct Activity {
    std::uint64_t options = 0;
    std::string reason;
    bool running = true;
};

struct LoginItemRegistry {
    SMAppServiceStatus status = SMAppServiceStatusNotRegistered;
    /// Why it refuses.
    std::optional<std::string> refusal;
};

struct Desk {
    std::vector<Display> displays = {{1, NSMakeRect(0, 0, 1440, 900), 2}};
    std::vector<Application> applications;
    std::optional<pid_t> frontmost;
    /// Identifier to path.
    std::map<std::string, std::string> installed;
    std::set<std::string> files;
    std::vector<std::string> openedUrls;

    // The program.
    std::optional<std::string> bundleIdentifier = "org.tarvik.Tarvik";
    std::map<std::string, std::string> info;
    std::set<std::string> frameworks;
    bool sparkleLoaded = false;
    std::vector<std::string> systemLog;
    std::vector<Activity> activities;
    LoginItemRegistry loginItems;
    std::map<std::string, Strong> defaults;
    NSApplicationActivationPolicy policy = NSApplicationActivationPolicyRegular;
    int activations = 0;
    int terminations = 0;

    // The look.
    bool dark = false;
    bool reducesMotion = false;
    double accent[3] = {0, 0.5, 1};
    bool accentHasComponents = true;

    std::vector<NSStatusItem*> statusItems;
};

Desk& desk();
/// A fresh desktop; drops what the last one held.
void resetDesk();

void post(NSNotificationCenter* center, NSNotificationName name);
std::size_t observers();
/// A value that is observed has changed.
void changed(NSObject* object, const char* path);
/// The user types a key; false when somebody swallowed it.
bool typeKey(unsigned short code, NSEventModifierFlags modifiers);
std::size_t keyMonitors();
/// The user opens the status item's menu.
NSArray<NSMenuItem*>* openMenu(NSStatusItem* item);
void choose(NSMenuItem* item);

/// What a path was made of.
std::vector<CGPoint> pointsOf(CGPathRef path);
struct Colour {
    std::string name;
    double alpha = 1;
    friend bool operator==(const Colour&, const Colour&) = default;
};
Colour colourOf(CGColorRef colour);

} // namespace tarvik::recorder

#pragma once

#include <AppKit/NSApplication.h>
#include <AppKit/NSGraphics.h>
#include <AppKit/NSStatusItem.h>
#include <AppKit/NSWindow.h>
#include <Foundation/Foundation.h>

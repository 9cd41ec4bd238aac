#pragma once

#include <Foundation/NSObject.h>
#include <Foundation/NSSystem.h>
#include <Foundation/NSValues.h>

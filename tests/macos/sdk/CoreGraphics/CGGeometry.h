// Core Graphics: geometry.
#pragma once

#include <CoreFoundation/CFBase.h>

typedef double CGFloat;
struct CGPoint {
    CGFloat x;
    CGFloat y;
};
struct CGSize {
    CGFloat width;
    CGFloat height;
};
struct CGRect {
    CGPoint origin;
    CGSize size;
};
inline CGPoint CGPointMake(CGFloat x, CGFloat y) { return {x, y}; }
inline CGSize CGSizeMake(CGFloat width, CGFloat height) { return {width, height}; }
inline CGRect CGRectMake(CGFloat x, CGFloat y, CGFloat width, CGFloat height) { return {{x, y}, {width, height}}; }

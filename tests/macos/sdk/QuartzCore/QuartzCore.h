// Core Animation: layers.
#pragma once

#include <CoreGraphics/CGDrawing.h>
#include <Foundation/Foundation.h>

@interface CALayer : NSObject
+ (instancetype)layer;
- (void)addSublayer:(CALayer*)layer;
@property CGFloat cornerRadius;
@property CGFloat contentsScale;
@property CGColorRef shadowColor;
@property float shadowOpacity;
@property CGFloat shadowRadius;
@property CGSize shadowOffset;
@end

typedef NSString* CAShapeLayerLineCap;
typedef NSString* CAShapeLayerLineJoin;
extern "C" CAShapeLayerLineCap const kCALineCapRound;
extern "C" CAShapeLayerLineJoin const kCALineJoinRound;
@interface CAShapeLayer : CALayer
/// Copied.
@property CGPathRef path;
@property CGColorRef fillColor;
@property CGColorRef strokeColor;
@property CGFloat lineWidth;
@property(copy) CAShapeLayerLineCap lineCap;
@property(copy) CAShapeLayerLineJoin lineJoin;
@end

@interface CATransaction : NSObject
+ (void)begin;
+ (void)commit;
+ (void)setDisableActions:(BOOL)flag;
@end

// Names of the classes, for headers that only point at them.
#pragma once

#include "vstgui/lib/vstguibase.h"

#include <cstdint>

namespace VSTGUI {

class CBitmap;
class CControl;
class CDrawContext;
class CFontDesc;
class CFrame;
class CView;
class CViewContainer;
class IControlListener;
class IPlatformBitmap;
class IPlatformFont;
class IPlatformFrame;
class IPlatformFrameCallback;
class IPlatformFrameConfig;
class VSTGUIEditorInterface;
struct CColor;
struct CPoint;
struct CRect;
struct Event;
struct MouseDownEvent;
struct MouseMoveEvent;
struct MouseUpEvent;
struct MouseWheelEvent;

using CFontRef = CFontDesc*;
using PlatformBitmapPtr = SharedPointer<IPlatformBitmap>;
using PlatformFontPtr = SharedPointer<IPlatformFont>;

// What a mouse handler returns.
enum CMouseEventResult : std::int32_t {
    kMouseEventNotImplemented = 0,
    kMouseEventHandled = 1,
    kMouseEventNotHandled = 2,
    // Of a press: consumed, and the view wants to hear of no move and no release.
    kMouseDownEventHandledButDontNeedMovedOrUpEvents = 3,
    kMouseMoveEventHandledButDontNeedMoreEvents = 4
};

} // namespace VSTGUI

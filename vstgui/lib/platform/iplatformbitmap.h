// A picture in the form that the platform draws.
#pragma once

#include "vstgui/lib/cpoint.h"

namespace VSTGUI {

class IPlatformBitmap : public NonAtomicReferenceCounted {
public:
    // In pixels of its own.
    virtual CPoint getSize() const = 0;
    // How many of its pixels make one of the frame's, along an edge: 2 for a picture that was made
    // for a frame of twice the size. 1 at the start; set before the picture is drawn.
    void setScaleFactor(double factor) { scaleFactor = factor; }
    double getScaleFactor() const { return scaleFactor; }

protected:
    ~IPlatformBitmap() override = default;

private:
    double scaleFactor = 1;
};

} // namespace VSTGUI

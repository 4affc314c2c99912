// A picture in the form that the platform draws.
#pragma once

#include "vstgui/lib/cpoint.h"

namespace VSTGUI {

class IPlatformBitmap : public NonAtomicReferenceCounted {
public:
    // In pixels.
    virtual CPoint getSize() const = 0;

protected:
    ~IPlatformBitmap() override = default;
};

} // namespace VSTGUI

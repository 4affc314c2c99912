// The views of a frame, in drawing order.
#pragma once

#include "vstgui/lib/ccolor.h"
#include "vstgui/lib/cview.h"

#include <cstdint>
#include <vector>

namespace VSTGUI {

// User-interface thread. Only a frame is a container; containers do not nest.
class CViewContainer : public CView {
public:
    using ViewList = std::vector<SharedPointer<CView>>;

    // Puts `view` on top of the others, or directly below `before`. Takes over the caller's
    // reference; returns false, and takes nothing, if the view is in a container already.
    bool addView(CView* view, CView* before = nullptr);
    // Returns false if `view` is not here. With `withForget` false the caller gets the reference
    // back that addView took. May be called from within the view's own handlers.
    bool removeView(CView* view, bool withForget = true);
    bool removeAll(bool withForget = true);
    std::uint32_t getNbViews() const { return static_cast<std::uint32_t>(views.size()); }
    // Null beyond the last view.
    CView* getView(std::uint32_t index) const;

    // Seen only while there is no background picture.
    void setBackgroundColor(const CColor& color);
    CColor getBackgroundColor() const { return backgroundColor; }

protected:
    using CView::CView;
    ~CViewContainer() override = default;

    // A copy, so that handlers may add and remove views while it is walked through.
    ViewList viewsFromTop() const { return {views.rbegin(), views.rend()}; }
    // Draws background and views as far as they lie in `rect`.
    void drawRect(CDrawContext& context, const CRect& rect);

private:
    // The frame that the views belong to.
    virtual CFrame* frameOfViews() = 0;

    ViewList views; // bottom to top; the caller's reference of addView is held besides
    CColor backgroundColor = kBlackCColor;
};

} // namespace VSTGUI

#include "vstgui/lib/cviewcontainer.h"

#include "vstgui/lib/cdrawcontext.h"

#include <algorithm>

namespace VSTGUI {

bool CViewContainer::addView(CView* view, CView* before) {
    if (!view || view->isAttached()) {
        return false;
    }
    views.insert(before ? std::find(views.begin(), views.end(), before) : views.end(),
                 shared(view));
    view->setFrame(frameOfViews());
    view->invalid();
    return true;
}

bool CViewContainer::removeView(CView* view, bool withForget) {
    const auto found = std::find(views.begin(), views.end(), view);
    if (found == views.end()) {
        return false;
    }
    const SharedPointer<CView> kept = *found;
    views.erase(found);
    view->invalid();
    view->setFrame(nullptr);
    if (withForget) {
        view->forget();
    }
    return true;
}

bool CViewContainer::removeAll(bool withForget) {
    while (!views.empty()) {
        removeView(views.back(), withForget);
    }
    return true;
}

CView* CViewContainer::getView(std::uint32_t index) const {
    return index < views.size() ? views[index].get() : nullptr;
}

void CViewContainer::setBackgroundColor(const CColor& color) {
    backgroundColor = color;
    setDirty();
}

void CViewContainer::drawRect(CDrawContext& context, const CRect& rect) {
    if (getBackground()) {
        CView::draw(&context);
    } else {
        context.fillRect(rect, backgroundColor);
    }
    for (const auto& view : views) {
        if (view->getViewSize().rectOverlap(rect)) {
            view->draw(&context);
        }
    }
}

} // namespace VSTGUI

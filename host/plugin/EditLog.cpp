#include "host/plugin/EditLog.h"

#include <utility>

namespace zelvatone {

EditLog::EditLog(HostedPlugin& plugin) : plugin_(plugin) {
    plugin.setEditListener(this);
}

EditLog::~EditLog() {
    plugin_.setEditListener(nullptr);
}

void EditLog::add(const EditNotice& notice) noexcept {
    const std::scoped_lock lock(mutex_);
    notices_.push_back(notice);
}

void EditLog::onBeginEdit(int parameter) noexcept {
    add({EditNotice::Kind::kBegin, parameter, 0});
}

void EditLog::onAutomate(int parameter, float value) noexcept {
    add({EditNotice::Kind::kChange, parameter, value});
}

void EditLog::onEndEdit(int parameter) noexcept {
    add({EditNotice::Kind::kEnd, parameter, 0});
}

void EditLog::onSizeWindow(int width, int height) noexcept {
    const std::scoped_lock lock(mutex_);
    size_ = WindowSize{width, height};
}

std::vector<EditNotice> EditLog::takeNotices() {
    const std::scoped_lock lock(mutex_);
    return std::exchange(notices_, {});
}

std::optional<WindowSize> EditLog::takeSize() {
    const std::scoped_lock lock(mutex_);
    return std::exchange(size_, std::nullopt);
}

} // namespace zelvatone

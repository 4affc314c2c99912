#include "clap/ClapEditor.h"

namespace zelvatone {

namespace {

// 50 pictures a second; slower ones are seen as steps when a knob is turned.
constexpr std::uint32_t kTimerMs = 20;

} // namespace

void ClapEditor::create() {
    EditorListener& listener = *this;
    panel_ = std::make_unique<EditorPanel>(listener);
}

void ClapEditor::destroy() {
    stopTimer();
    panel_.reset();
}

bool ClapEditor::setScale(double scale) {
    if (panel_->isOpen()) {
        return false;
    }
    panel_->setScale(scale);
    return true;
}

bool ClapEditor::openIn(void* parent) {
    stopTimer();
    std::uint32_t timer = 0;
    if (!host_.startTimer(kTimerMs, timer)) {
        return false;
    }
    timer_ = timer;
    showValues();
    panel_->open(parent);
    return true;
}

void ClapEditor::stopTimer() {
    if (timer_) {
        host_.stopTimer(*timer_);
        timer_.reset();
    }
}

void ClapEditor::handleTimer(std::uint32_t timer) {
    if (timer_ == timer) {
        showValues();
        panel_->idle();
    }
}

void ClapEditor::showValues() {
    for (std::int32_t i = 0; i < kShownParameters; ++i) {
        const auto index = static_cast<ParameterIndex>(i);
        panel_->show(index, instrument_.value(index));
    }
}

void ClapEditor::editBegins(ParameterIndex index) {
    send(EditQueue::Kind::kBegin, index);
}

void ClapEditor::valueEdited(ParameterIndex index, float value) {
    instrument_.setValue(index, static_cast<double>(value));
    send(EditQueue::Kind::kValue, index);
}

void ClapEditor::editEnds(ParameterIndex index) {
    send(EditQueue::Kind::kEnd, index);
}

void ClapEditor::send(EditQueue::Kind kind, ParameterIndex index) {
    edits_.push(kind, static_cast<std::uint32_t>(index));
    host_.requestFlush();
}

} // namespace zelvatone

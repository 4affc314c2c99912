#include "clap/EditQueue.h"

#include "clap/BlockPlayer.h"

namespace zelvatone {

namespace {

void pushGesture(const clap::OutputEvents& out, std::uint16_t type, std::uint32_t id) {
    const clap::ParamGestureEvent event{.header = {.size = sizeof event,
                                                   .time = 0,
                                                   .space = clap::kCoreEventSpace,
                                                   .type = type,
                                                   .flags = 0},
                                        .param = id};
    out.tryPush(&out, &event.header);
}

} // namespace

void EditQueue::push(Kind kind, std::uint32_t id) {
    const std::size_t written = written_.load();
    const std::size_t waiting = written - read_.load();
    if (waiting >= (kind == Kind::kValue ? kMostValues : kCapacity)) {
        return;
    }
    edits_[written % kCapacity] = {.kind = kind, .id = id};
    written_.store(written + 1);
}

void EditQueue::sendTo(const clap::OutputEvents& out, const Instrument& instrument) {
    const std::size_t written = written_.load();
    std::size_t read = read_.load();
    for (; read != written; ++read) {
        const Edit edit = edits_[read % kCapacity];
        if (edit.kind == Kind::kValue) {
            pushValue(out, 0, edit.id, valueOfId(instrument, edit.id));
        } else {
            pushGesture(
                out, edit.kind == Kind::kBegin ? clap::kParamGestureBegin : clap::kParamGestureEnd,
                edit.id);
        }
    }
    read_.store(read);
}

} // namespace zelvatone

// The editor in a CLAP host's window.
#pragma once

#include "clap/EditQueue.h"
#include "clap/HostLink.h"
#include "editorpanel/EditorPanel.h"
#include "formats/Instrument.h"

#include <cstdint>
#include <memory>
#include <optional>

namespace zelvatone {

// Edits go into the instrument at once, and to the host by way of the queue; what changes in the
// instrument is shown at the host's timer. Main thread.
class ClapEditor final : private EditorListener {
public:
    // None of the three is owned.
    ClapEditor(Instrument& instrument, HostLink& host, EditQueue& edits)
        : instrument_(instrument), host_(host), edits_(edits) {}
    ClapEditor(const ClapEditor&) = delete;
    ClapEditor& operator=(const ClapEditor&) = delete;
    ~ClapEditor() { destroy(); }

    void create();
    // Closes the window.
    void destroy();
    bool isCreated() const { return panel_ != nullptr; }

    // The four need a created editor. `scale` is for a window that is opened later; false while one
    // is open.
    bool setScale(double scale);
    EditorPanel::Size size() const { return panel_->size(); }
    // Opens the editor in the host's window. Returns false for a host without timers, in which it
    // would never draw.
    bool openIn(void* parent);
    void handleTimer(std::uint32_t timer);

private:
    void editBegins(ParameterIndex index) override;
    void valueEdited(ParameterIndex index, float value) override;
    void editEnds(ParameterIndex index) override;

    void send(EditQueue::Kind kind, ParameterIndex index);
    void showValues();
    void stopTimer();

    Instrument& instrument_;
    HostLink& host_;
    EditQueue& edits_;
    std::unique_ptr<EditorPanel> panel_; // null until created
    std::optional<std::uint32_t> timer_;
};

} // namespace zelvatone

// The plug-in object as a CLAP host sees it.
#pragma once

#include "clap/BlockPlayer.h"
#include "clap/ClapEditor.h"
#include "clap/EditQueue.h"
#include "clap/HostLink.h"
#include "clap/abi/Plugin.h"
#include "formats/Instrument.h"

#include <cstdint>

namespace zelvatone {

// What a host reads before it makes an instance.
extern const clap::Descriptor kClapDescriptor;

// Owns itself between its creation and the host's call of destroy. Threads: as the record's
// functions say in clap/abi/Plugin.h.
class ClapPlugin {
public:
    // `host` outlives the plug-in.
    explicit ClapPlugin(const clap::Host& host);
    ClapPlugin(const ClapPlugin&) = delete;
    ClapPlugin& operator=(const ClapPlugin&) = delete;
    ~ClapPlugin() = default;

    // What the host calls.
    const clap::Plugin& record() const { return record_; }
    // The object behind a host's record.
    static ClapPlugin& of(const clap::Plugin* record) {
        return *static_cast<ClapPlugin*>(record->pluginData);
    }

    void init();
    void activate(double sampleRate);
    void reset();
    clap::ProcessStatus process(const clap::Process& process);
    void onMainThread();
    // Takes values in and hands the editor's out, without a block.
    void flush(const clap::InputEvents* in, const clap::OutputEvents* out);

    Instrument& instrument() { return instrument_; }
    const Instrument& instrument() const { return instrument_; }
    HostLink& host() { return host_; }
    ClapEditor& editor() { return editor_; }

private:
    clap::Plugin record_;
    HostLink host_;
    Instrument instrument_{Instrument::ProgramChange::kFollowed};
    BlockPlayer player_{instrument_};
    EditQueue edits_;
    ClapEditor editor_{instrument_, host_, edits_};
    std::uint32_t toldProgramChanges_ = 0; // those that the host knows of; main thread
};

} // namespace zelvatone

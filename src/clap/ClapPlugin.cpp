#include "clap/ClapPlugin.h"

#include "clap/PluginExtensions.h"

namespace zelvatone {

namespace {

constexpr const char* kFeatures[] = {"instrument", "synthesizer", "stereo", nullptr};

// The calls that the host makes through the record. All are noexcept: an exception must not unwind
// into a host that may be written in another language, so it ends the process here.

bool initPlugin(const clap::Plugin* plugin) noexcept {
    ClapPlugin::of(plugin).init();
    return true;
}

void destroyPlugin(const clap::Plugin* plugin) noexcept {
    delete &ClapPlugin::of(plugin);
}

bool activatePlugin(const clap::Plugin* plugin, double sampleRate, std::uint32_t /*minFrames*/,
                    std::uint32_t /*maxFrames*/) noexcept {
    ClapPlugin::of(plugin).activate(sampleRate);
    return true;
}

void deactivatePlugin(const clap::Plugin* /*plugin*/) noexcept {}

bool startProcessing(const clap::Plugin* /*plugin*/) noexcept {
    return true;
}

void stopProcessing(const clap::Plugin* /*plugin*/) noexcept {}

void resetPlugin(const clap::Plugin* plugin) noexcept {
    ClapPlugin::of(plugin).reset();
}

clap::ProcessStatus processBlock(const clap::Plugin* plugin,
                                 const clap::Process* process) noexcept {
    return ClapPlugin::of(plugin).process(*process);
}

const void* extensionOf(const clap::Plugin* /*plugin*/, const char* id) noexcept {
    return pluginExtension(id);
}

void callOnMainThread(const clap::Plugin* plugin) noexcept {
    ClapPlugin::of(plugin).onMainThread();
}

bool canTakeSamples(const clap::Process& process) {
    return process.audioOutputCount > 0 && process.audioOutputs[0].channelCount >= 2 &&
           process.audioOutputs[0].data32 != nullptr;
}

} // namespace

const clap::Descriptor kClapDescriptor{.version = clap::kVersion,
                                       .id = "com.quillfeather.zelvatone",
                                       .name = "Zelvatone",
                                       .vendor = "Quillfeather",
                                       .url = "",
                                       .manualUrl = "",
                                       .supportUrl = "",
                                       .pluginVersion = ZELVATONE_VERSION,
                                       .description = "Mode synthesis: banks of up to 100 partials",
                                       .features = kFeatures};

ClapPlugin::ClapPlugin(const clap::Host& host)
    : record_{.descriptor = &kClapDescriptor,
              .pluginData = this,
              .init = initPlugin,
              .destroy = destroyPlugin,
              .activate = activatePlugin,
              .deactivate = deactivatePlugin,
              .startProcessing = startProcessing,
              .stopProcessing = stopProcessing,
              .reset = resetPlugin,
              .process = processBlock,
              .getExtension = extensionOf,
              .onMainThread = callOnMainThread},
      host_(host) {}

void ClapPlugin::init() {
    host_.find();
}

void ClapPlugin::activate(double sampleRate) {
    instrument_.setSampleRate(sampleRate);
    player_.reset();
}

void ClapPlugin::reset() {
    player_.reset();
}

clap::ProcessStatus ClapPlugin::process(const clap::Process& process) {
    if (!canTakeSamples(process)) {
        return clap::kProcessError;
    }
    if (process.outEvents != nullptr) {
        edits_.sendTo(*process.outEvents, instrument_);
    }
    const std::uint32_t changes = instrument_.programChanges();
    player_.play(process);
    if (instrument_.programChanges() != changes) {
        host_.requestCallback();
    }
    return instrument_.isSilent() ? clap::kProcessSleep : clap::kProcessContinue;
}

void ClapPlugin::onMainThread() {
    const std::uint32_t changes = instrument_.programChanges();
    if (changes != toldProgramChanges_) {
        toldProgramChanges_ = changes;
        host_.valuesHaveChanged();
        host_.markDirty();
    }
}

void ClapPlugin::flush(const clap::InputEvents* in, const clap::OutputEvents* out) {
    if (out != nullptr) {
        edits_.sendTo(*out, instrument_);
    }
    if (in != nullptr) {
        player_.takeValues(*in);
    }
}

} // namespace zelvatone

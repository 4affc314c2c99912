#include "tests/clap/checker/Check.h"
#include "tests/clap/host/Streams.h"

namespace zelvatone::test {

namespace {

std::string stateOf(const ClapInstance& instance, std::size_t portion = SIZE_MAX) {
    const auto& state = extensionOf<clap::PluginState>(instance, clap::kStateId);
    ByteSink sink(portion);
    require(state.save(&instance.plugin(), &sink.record()), "the state cannot be saved");
    require(!sink.bytes.empty(), "the state is empty");
    return sink.bytes;
}

bool loadState(const ClapInstance& instance, const std::string& bytes,
               std::size_t portion = SIZE_MAX) {
    const auto& state = extensionOf<clap::PluginState>(instance, clap::kStateId);
    const ByteSource source(bytes, portion);
    return state.load(&instance.plugin(), &source.record());
}

// Random values; the block makes the plug-in take them on.
void playRandomValues(ClapInstance& instance, std::mt19937& random, bool withCookies = true) {
    InputList events;
    OutputList sent;
    addRandomValues(instance, random, events, withCookies);
    if (!instance.isActive()) {
        instance.activate(48000.0, 64);
    }
    instance.play(64, events, sent);
}

void comesBack(CheckContext& context) {
    for (int round = 0; round < 10; ++round) {
        ClapInstance saved = context.make();
        playRandomValues(saved, context.random, round % 2 == 0);
        const std::string bytes = stateOf(saved);
        const ClapInstance loaded = context.make();
        require(loadState(loaded, bytes), "the plug-in does not load what it has saved");
        require(valuesOf(loaded) == valuesOf(saved), "a loaded value is another one");
        require(stateOf(loaded) == bytes, "the state of a loaded plug-in is another one");
        requireNoFaults(loaded);
    }
}

void everyStep(CheckContext& context) {
    const ClapInstance saved = context.make();
    const ClapInstance loaded = context.make();
    const auto& params = extensionOf<clap::PluginParams>(saved, clap::kParamsId);
    for (const clap::ParamInfo& parameter : parametersOf(saved)) {
        const bool isStepped = (parameter.flags & clap::kParamIsStepped) != 0;
        for (double step = parameter.min; isStepped && step <= parameter.max; ++step) {
            InputList events;
            OutputList sent;
            events.add(paramValue(0, parameter.id, step, parameter.cookie));
            params.flush(&saved.plugin(), &events.record(), &sent.record());
            double value = -1e9;
            require(loadState(loaded, stateOf(saved)), "a state is not loaded");
            require(params.getValue(&loaded.plugin(), parameter.id, &value) && value == step,
                    std::string(parameter.name) + " loses a step in the state");
        }
    }
}

void flushedOrPlayed(CheckContext& context) {
    const ClapInstance flushed = context.make();
    ClapInstance played = context.make();
    InputList events;
    OutputList sent;
    addRandomValues(flushed, context.random, events);
    const auto& params = extensionOf<clap::PluginParams>(flushed, clap::kParamsId);
    params.flush(&flushed.plugin(), &events.record(), &sent.record());
    played.activate(48000.0, 64);
    played.play(64, events, sent);
    require(stateOf(flushed) == stateOf(played),
            "flushed values give another state than played ones");
}

void smallPortions(CheckContext& context) {
    ClapInstance saved = context.make();
    playRandomValues(saved, context.random);
    const std::string bytes = stateOf(saved);
    require(stateOf(saved, 17) == bytes, "a state that is written in portions is another one");
    for (const std::size_t portion : {1U, 7U, 23U}) {
        const ClapInstance loaded = context.make();
        require(loadState(loaded, bytes, portion), "a state in portions is not loaded");
        require(valuesOf(loaded) == valuesOf(saved), "a state in portions has other values");
    }
}

void fullStream(CheckContext& context) {
    const ClapInstance instance = context.make();
    const auto& state = extensionOf<clap::PluginState>(instance, clap::kStateId);
    const ByteSink sink(8, stateOf(instance).size() - 1);
    require(!state.save(&instance.plugin(), &sink.record()), "a failed write was not noticed");
    ByteSource source("");
    source.fails = true;
    require(!state.load(&instance.plugin(), &source.record()), "a failed read was not noticed");
}

void garbage(CheckContext& context) {
    ClapInstance instance = context.make();
    playRandomValues(instance, context.random);
    const std::vector<double> before = valuesOf(instance);
    std::vector<std::string> wrong{"", std::string(1, '\0'), std::string(100000, 'x')};
    for (int i = 0; i < 20; ++i) {
        std::string bytes(context.random() % 3000, '\0');
        for (char& byte : bytes) {
            byte = static_cast<char>(context.random());
        }
        wrong.push_back(bytes);
    }
    for (const std::string& bytes : wrong) {
        require(!loadState(instance, bytes), "garbage was loaded as a state");
        require(valuesOf(instance) == before, "garbage has changed a value");
    }
    InputList none;
    OutputList sent;
    instance.play(64, none, sent);
    requireNoFaults(instance);
}

void cutShort(CheckContext& context) {
    ClapInstance instance = context.make();
    playRandomValues(instance, context.random);
    const std::vector<double> before = valuesOf(instance);
    const std::string other = stateOf(context.make());
    for (const std::size_t length : {other.size() - 1, other.size() / 2, std::size_t{1}}) {
        require(!loadState(instance, other.substr(0, length)), "a part of a state was loaded");
        require(valuesOf(instance) == before, "a part of a state has changed a value");
    }
}

constexpr Check kChecks[] = {
    {"state-reproducibility", "A saved state loads with the same values.", comesBack},
    {"state-steps", "Every step of every parameter comes back.", everyStep},
    {"state-flush", "Flushed and played values give the same state.", flushedOrPlayed},
    {"state-portions", "States come and go in small portions.", smallPortions},
    {"state-stream-errors", "Errors of the stream are noticed.", fullStream},
    {"state-garbage", "Garbage is refused and changes nothing.", garbage},
    {"state-cut", "A part of a state is refused and changes nothing.", cutShort},
};

} // namespace

std::span<const Check> stateChecks() {
    return kChecks;
}

} // namespace zelvatone::test

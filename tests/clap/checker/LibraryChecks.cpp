#include "tests/clap/checker/Check.h"

#include <algorithm>
#include <array>
#include <set>
#include <string_view>

namespace zelvatone::test {

namespace {

const clap::Descriptor& descriptorOf(const CheckContext& context) {
    const clap::PluginFactory* factory = context.library.factory();
    for (std::uint32_t i = 0; i < factory->getPluginCount(factory); ++i) {
        const clap::Descriptor* descriptor = factory->getPluginDescriptor(factory, i);
        if (descriptor != nullptr && descriptor->id == context.id) {
            return *descriptor;
        }
    }
    throw CheckFailure("no descriptor has the plug-in's id");
}

void unknownFactory(CheckContext& context) {
    require(context.library.entry().getFactory("no such factory") == nullptr,
            "a factory that does not exist was returned");
}

void unknownId(CheckContext& context) {
    const clap::PluginFactory* factory = context.library.factory();
    for (const std::string& id : {context.id + " and more", std::string(), std::string("x")}) {
        clap::Host host{};
        host.version = clap::kVersion;
        host.getExtension = [](const clap::Host*, const char*) -> const void* { return nullptr; };
        require(factory->createPlugin(factory, &host, id.c_str()) == nullptr,
                "a plug-in was created for the id \"" + id + '"');
    }
    require(factory->getPluginDescriptor(factory, factory->getPluginCount(factory)) == nullptr,
            "there is a descriptor after the last one");
}

void descriptor(CheckContext& context) {
    const clap::Descriptor& published = descriptorOf(context);
    const ClapInstance instance = context.make();
    const clap::Descriptor* own = instance.plugin().descriptor;
    require(own != nullptr, "the instance has no descriptor");
    require(std::string_view(own->id) == published.id, "the instance has another id");
    require(std::string_view(own->name) == published.name, "the instance has another name");
    require(clap::isCompatible(own->version), "the descriptor is of a version below 1");
    require(*own->id != '\0' && *own->name != '\0', "id or name is empty");
}

void features(CheckContext& context) {
    static constexpr std::array<std::string_view, 5> kKinds{
        "instrument", "audio-effect", "note-effect", "note-detector", "analyzer"};
    std::set<std::string_view> found;
    bool hasKind = false;
    for (const char* const* feature = descriptorOf(context).features; *feature != nullptr;
         ++feature) {
        require(found.insert(*feature).second, std::string(*feature) + " is named twice");
        hasKind = hasKind || std::ranges::find(kKinds, *feature) != kKinds.end();
    }
    require(hasKind, "no feature says what kind of plug-in it is");
}

void unknownExtension(CheckContext& context) {
    const ClapInstance instance = context.make();
    require(instance.extension<void>("no such extension") == nullptr,
            "an extension that does not exist was returned");
}

void ports(CheckContext& context) {
    const ClapInstance instance = context.make();
    const clap::Plugin* plugin = &instance.plugin();
    const auto& audio = extensionOf<clap::PluginAudioPorts>(instance, clap::kAudioPortsId);
    for (const bool isInput : {true, false}) {
        std::set<std::uint32_t> ids;
        const std::uint32_t count = audio.count(plugin, isInput);
        clap::AudioPortInfo info{};
        for (std::uint32_t i = 0; i < count; ++i) {
            require(audio.get(plugin, i, isInput, &info), "an audio port has no info");
            require(ids.insert(info.id).second, "two audio ports have the same id");
            require(info.channelCount > 0, "an audio port has no channels");
        }
        require(!audio.get(plugin, count, isInput, &info), "there is a port after the last one");
    }
    const auto& notes = extensionOf<clap::PluginNotePorts>(instance, clap::kNotePortsId);
    clap::NotePortInfo info{};
    for (std::uint32_t i = 0; i < notes.count(plugin, true); ++i) {
        require(notes.get(plugin, i, true, &info), "a note port has no info");
        require((info.supportedDialects & info.preferredDialect) != 0,
                "the preferred dialect of notes is not supported");
    }
}

void manyInstances(CheckContext& context) {
    const ClapInstance first = context.make();
    const std::vector<double> before = valuesOf(first);
    ClapInstance second = context.make();
    second.activate(48000.0, 64);
    InputList events;
    OutputList sent;
    addRandomValues(second, context.random, events);
    second.play(64, events, sent);
    require(valuesOf(first) == before, "a value set in one instance has changed another");
}

void activation(CheckContext& context) {
    ClapInstance instance = context.make();
    InputList events;
    OutputList sent;
    for (const double rate : {44100.0, 48000.0, 96000.0, 22050.0}) {
        instance.activate(rate, 512);
        instance.play(512, events, sent);
        instance.deactivate();
    }
    instance.activate(44100.0, 1); // and never started
    instance.deactivate();
    requireNoFaults(instance);
}

constexpr Check kChecks[] = {
    {"factory-unknown", "A factory that does not exist is null.", unknownFactory},
    {"create-unknown-id", "No plug-in is created for an id that is not one.", unknownId},
    {"descriptor", "The descriptor is whole, and that of the instance.", descriptor},
    {"features", "One feature says what kind it is, none comes twice.", features},
    {"extension-unknown", "An extension that does not exist is null.", unknownExtension},
    {"ports", "Ports have infos, ids of their own and a dialect that they support.", ports},
    {"instances", "Instances have values of their own.", manyInstances},
    {"activation", "The plug-in can be activated again at any rate.", activation},
};

} // namespace

std::span<const Check> libraryChecks() {
    return kChecks;
}

} // namespace zelvatone::test

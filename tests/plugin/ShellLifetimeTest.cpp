#include "tests/plugin/ShellTest.h"

namespace {

using zelvatone::VstInterface;

// Says when it goes.
class MortalInterface final : public VstInterface {
public:
    MortalInterface(SpyEngine& engine, std::vector<std::string>& journal)
        : VstInterface(RecordingHost::callback, &engine, 1, false), journal(journal) {}
    ~MortalInterface() override { journal.emplace_back("deleted"); }
    MortalInterface(const MortalInterface&) = delete;
    MortalInterface& operator=(const MortalInterface&) = delete;

    void close() override { journal.emplace_back("close"); }

private:
    std::vector<std::string>& journal;
};

TEST(ShellLifetime, EndsWithTheHostsRequestToClose) {
    RecordingHost host;
    SpyEngine engine;
    std::vector<std::string> journal;
    const HostedEffect effect((new MortalInterface(engine, journal))->getAeffect());

    EXPECT_EQ(effect.ask(effClose), 1);

    EXPECT_EQ(journal, (std::vector<std::string>{"close", "deleted"}));
}

TEST(ShellLifetime, LeavesTheEngineWhole) {
    RecordingHost host;
    SpyEngine engine; // destroyed by this test: a second time, had the plug-in done it too
    auto* plugin = new zelvatone::VSTGuiVSTInterface(RecordingHost::callback, &engine, 1);
    const HostedEffect effect(plugin->getAeffect());
    effect.send({{0x90, 60, 100, 7}});

    EXPECT_EQ(effect.ask(effClose), 1);

    EXPECT_EQ(engine.programs.size(), 3U);
    EXPECT_EQ(engine.takeEvents(), std::vector<std::string>{"on 60 100 at 7"});
}

TEST(ShellLifetime, LetsTwoShellsFrontOneEngineInTurn) {
    RecordingHost host;
    SpyEngine engine;
    for (int i = 0; i < 2; ++i) {
        auto* plugin = new zelvatone::VSTGuiVSTInterface(RecordingHost::callback, &engine, 1);
        const HostedEffect effect(plugin->getAeffect());
        effect.render(4);
        effect.ask(effClose);
    }
    EXPECT_EQ(engine.renders.size(), 2U);
}

} // namespace

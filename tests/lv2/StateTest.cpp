// What comes back from a session that a host's library has written and read.
#include "formats/InstrumentState.h"
#include "formats/ParameterUnits.h"
#include "tests/lv2/HostedLv2.h"
#include "tests/lv2/Urids.h"

#include <lv2/atom/atom.h>
#include <lv2/state/state.h>

#include <gmock/gmock.h>

#include <random>

namespace zelvatone::test {
namespace {

// A new instance that has read what `text` keeps.
std::unique_ptr<HostedLv2> reopened(const std::string& text) {
    const LilvOwner<LilvState> state(
        lilv_state_new_from_string(Lv2Bundle::get().world(), Urids::get().mapper(), text.c_str()));
    auto lv2 = std::make_unique<HostedLv2>();
    lv2->restore(state.get());
    return lv2;
}

// The values that sound, exactly: what the plug-in saves itself.
InstrumentState valuesIn(HostedLv2& lv2) {
    lv2.render(0); // takes over the ports
    std::string text;
    const LV2_State_Store_Function store = [](LV2_State_Handle handle, std::uint32_t,
                                              const void* value, std::size_t size, std::uint32_t,
                                              std::uint32_t) {
        static_cast<std::string*>(handle)->assign(static_cast<const char*>(value), size - 1);
        return LV2_STATE_SUCCESS;
    };
    const auto* state = static_cast<const LV2_State_Interface*>(
        lilv_instance_get_extension_data(lv2.instance(), LV2_STATE__interface));
    state->save(lilv_instance_get_handle(lv2.instance()), store, &text, 0, nullptr);
    return stateOfText(text).value();
}

TEST(Lv2State, KeepsEveryWholeNumberInThePortsAlone) {
    HostedLv2 lv2;
    for (float step = 0; step <= 100; ++step) {
        std::map<std::uint32_t, float> set;
        for (const ParameterUnits& parameter : parameterUnits().first(kShownParameters)) {
            if (parameter.isWhole) {
                set[lv2::portOf(parameter.index)] = std::min(parameter.min + step, parameter.max);
            }
        }
        for (const auto& [port, value] : set) {
            lv2.port(port) = value;
        }
        const auto again = reopened(lv2.savedText());
        for (const auto& [port, value] : set) {
            EXPECT_EQ(again->port(port), value) << "port " << port;
        }
    }
}

TEST(Lv2State, KeepsEveryFloatThatSounds) {
    std::mt19937 random(1);
    HostedLv2 lv2;
    for (int round = 0; round < 100; ++round) {
        for (const ParameterUnits& parameter : parameterUnits().first(kShownParameters)) {
            if (!parameter.isWhole) {
                // Small values, too, where floats lie closer than a host's decimals.
                const float part = std::generate_canonical<float, 24>(random);
                const float scale = round % 2 == 0 ? 1.0F : 0.01F;
                lv2.port(lv2::portOf(parameter.index)) =
                    parameter.min + (parameter.max - parameter.min) * part * scale;
            }
        }
        const InstrumentState before = valuesIn(lv2);
        const auto again = reopened(lv2.savedText());
        ASSERT_EQ(valuesIn(*again), before) << "round " << round;
    }
}

TEST(Lv2State, GivesWayToWhatTheUserTurnsAfterLoading) {
    HostedLv2 lv2;
    const auto again = reopened(lv2.savedText());
    again->render(16);
    again->port(lv2::portOf(kAttack)) = 0.01F;
    EXPECT_EQ(valuesIn(*again).values[kAttack], 0.01F);
}

TEST(Lv2State, UnreadableTextChangesNothing) {
    HostedLv2 lv2;
    lv2.port(lv2::portOf(kAttack)) = 0.5F;
    const InstrumentState before = valuesIn(lv2);
    const auto* state = static_cast<const LV2_State_Interface*>(
        lilv_instance_get_extension_data(lv2.instance(), LV2_STATE__interface));
    struct Saved {
        std::string text;
        std::uint32_t type;
    };
    const auto tryAll = [&](const Saved& saved) {
        const LV2_State_Retrieve_Function retrieve = [](LV2_State_Handle handle, std::uint32_t,
                                                        std::size_t* size, std::uint32_t* type,
                                                        std::uint32_t*) -> const void* {
            const auto* all = static_cast<const Saved*>(handle);
            *size = all->text.empty() ? 0 : all->text.size() + 1;
            *type = all->type;
            return all->text.c_str();
        };
        return state->restore(lilv_instance_get_handle(lv2.instance()), retrieve,
                              const_cast<Saved*>(&saved), 0, nullptr);
    };
    const std::uint32_t string = Urids::get().map(LV2_ATOM__String);
    const std::string good = textOfState(defaultState());
    EXPECT_NE(tryAll({good, Urids::get().map(LV2_ATOM__Int)}), LV2_STATE_SUCCESS);
    EXPECT_NE(tryAll({"", string}), LV2_STATE_SUCCESS);
    EXPECT_NE(tryAll({good.substr(0, good.size() / 2), string}), LV2_STATE_SUCCESS);
    EXPECT_NE(tryAll({good + "\n", string}), LV2_STATE_SUCCESS);
    EXPECT_EQ(valuesIn(lv2), before);
    EXPECT_EQ(tryAll({good, string}), LV2_STATE_SUCCESS);
}

} // namespace
} // namespace zelvatone::test

#include "host/plugin/HostServices.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <thread>

namespace zelvatone {
namespace {

class HostServicesTest : public ::testing::Test {
protected:
    HostServicesTest() { services_.attachTo(&effect_); }

    VstIntPtr ask(VstInt32 opcode, VstInt32 index = 0, VstIntPtr value = 0, void* ptr = nullptr) {
        return HostServices::callback(&effect_, opcode, index, value, ptr, 0.0F);
    }
    VstIntPtr canDo(std::string text) { return ask(audioMasterCanDo, 0, 0, text.data()); }
    const VstTimeInfo* time(VstInt32 filter) {
        return reinterpret_cast<const VstTimeInfo*>(ask(audioMasterGetTime, 0, filter));
    }

    HostServices services_{{96000.0, 333}, "/some/folder"};
    AEffect effect_{};
};

VstTimeInfo fullTime() {
    VstTimeInfo time{};
    time.tempo = 93.0;
    time.ppqPos = 7.5;
    time.flags = kVstTransportPlaying | kVstTempoValid | kVstPpqPosValid | kVstBarsValid;
    return time;
}

TEST_F(HostServicesTest, ReturnsTheVersionBeforeThereIsAPlugIn) {
    EXPECT_EQ(HostServices::callback(nullptr, audioMasterVersion, 0, 0, nullptr, 0.0F), 2400);
}

TEST_F(HostServicesTest, ServesAPlugInThatIsStillBeingConstructed) {
    AEffect unfinished{};
    const HostServices::ConstructionScope scope(services_);
    EXPECT_EQ(HostServices::callback(nullptr, audioMasterGetBlockSize, 0, 0, nullptr, 0.0F), 333);
    EXPECT_EQ(HostServices::callback(&unfinished, audioMasterGetBlockSize, 0, 0, nullptr, 0.0F),
              333);
}

TEST_F(HostServicesTest, ReturnsNothingToAnUnknownInstance) {
    AEffect stranger{};
    EXPECT_EQ(HostServices::callback(&stranger, audioMasterGetTime, 0, 0, nullptr, 0.0F), 0);
}

TEST_F(HostServicesTest, TellsTheStreamFormat) {
    EXPECT_EQ(ask(audioMasterGetSampleRate), 96000);
    EXPECT_EQ(ask(audioMasterGetBlockSize), 333);
}

TEST_F(HostServicesTest, HandsOutTheTimeWithTheFlagsThatWereAskedFor) {
    services_.setTime(fullTime());
    const VstTimeInfo* given = time(kVstTempoValid);
    ASSERT_NE(given, nullptr);
    EXPECT_EQ(given->flags, kVstTempoValid | kVstTransportPlaying);
    EXPECT_DOUBLE_EQ(given->tempo, 93.0);
    EXPECT_EQ(time(0)->flags, kVstTransportPlaying);
    EXPECT_EQ(time(kVstPpqPosValid | kVstSmpteValid)->flags,
              kVstPpqPosValid | kVstTransportPlaying);
}

TEST_F(HostServicesTest, StandsStillBeforeAnythingPlays) {
    EXPECT_EQ(time(kVstTempoValid | kVstPpqPosValid)->flags, 0);
    EXPECT_DOUBLE_EQ(time(0)->sampleRate, 96000.0);
}

TEST_F(HostServicesTest, GivesEveryThreadARecordOfItsOwn) {
    services_.setTime(fullTime());
    const VstTimeInfo* here = time(kVstTempoValid);
    std::thread([&] { EXPECT_NE(time(kVstPpqPosValid), here); }).join();
    EXPECT_EQ(here->flags, kVstTempoValid | kVstTransportPlaying);
}

TEST_F(HostServicesTest, PromisesMidi) {
    EXPECT_EQ(ask(audioMasterWantMidi, 0, 1), 1);
}

TEST_F(HostServicesTest, AcceptsEdits) {
    EXPECT_EQ(ask(audioMasterBeginEdit, 3), 1);
    EXPECT_EQ(ask(audioMasterAutomate, 3), 1);
    EXPECT_EQ(ask(audioMasterEndEdit, 3), 1);
    EXPECT_EQ(ask(audioMasterUpdateDisplay), 1);
}

TEST_F(HostServicesTest, SaysYesToWhatItCanDo) {
    for (const char* text : {"sendVstEvents", "sendVstMidiEvent", "sendVstTimeInfo", "sizeWindow",
                             "startStopProcess"}) {
        EXPECT_EQ(canDo(text), 1) << text;
    }
}

// Plug-in bases turn every result but 0 into a yes.
TEST_F(HostServicesTest, ReturnsZeroForWhatItCannotDo) {
    for (const char* text : {"receiveVstEvents", "openFileSelector", "offline", "SizeWindow", ""}) {
        EXPECT_EQ(canDo(text), 0) << text;
    }
    EXPECT_EQ(ask(audioMasterCanDo), 0);
}

TEST_F(HostServicesTest, GrantsAnyPossibleSizeOfWindow) {
    EXPECT_EQ(ask(audioMasterSizeWindow, 717, 477), 1);
    EXPECT_EQ(ask(audioMasterSizeWindow, 0, 477), 0);
}

TEST_F(HostServicesTest, NamesItselfWithinTheInterfacesLengths) {
    std::array<char, 65> text{};
    text.fill('#');
    EXPECT_EQ(ask(audioMasterGetProductString, 0, 0, text.data()), 1);
    EXPECT_STREQ(text.data(), "zelvatone");
    EXPECT_EQ(text[64], '#'); // 64 characters with the terminator, in some plug-ins' buffers
    EXPECT_EQ(ask(audioMasterGetVendorString, 0, 0, text.data()), 1);
    EXPECT_STRNE(text.data(), "");
    EXPECT_EQ(ask(audioMasterGetVendorString), 0);
    EXPECT_GT(ask(audioMasterGetVendorVersion), 0);
}

TEST_F(HostServicesTest, NamesThePlugInsFolder) {
    EXPECT_STREQ(reinterpret_cast<const char*>(ask(audioMasterGetDirectory)), "/some/folder");
}

TEST_F(HostServicesTest, TellsWhetherItRenders) {
    EXPECT_EQ(ask(audioMasterGetCurrentProcessLevel), 1); // a user's thread
    services_.setRendering(true);
    EXPECT_EQ(ask(audioMasterGetCurrentProcessLevel), 4); // offline
}

TEST_F(HostServicesTest, ReturnsZeroForAnUnknownRequest) {
    EXPECT_EQ(ask(12345), 0);
    EXPECT_EQ(ask(-1), 0);
    EXPECT_EQ(ask(audioMasterGetInputLatency), 0);
}

} // namespace
} // namespace zelvatone

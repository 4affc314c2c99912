// A library that was built without its pictures: the editor stays empty, and all else works.
#include "engine/ZelvatoneEngine.h"
#include "plugin/VSTGuiVSTInterface.h"
#include "vstguieditor/EmbeddedPictures.h"

#include <gtest/gtest.h>

#include <memory>

namespace zelvatone {

// Takes the place of the one with the pictures.
std::span<const std::uint8_t> embeddedPicture(std::string_view) {
    return {};
}

namespace test {
namespace {

VstIntPtr hostOfNothing(AEffect*, VstInt32, VstInt32, VstIntPtr, void*, float) {
    return 0;
}

class EditorWithoutPictures : public testing::Test {
protected:
    VstIntPtr dispatch(VstInt32 opcode, void* ptr = nullptr) {
        return plugin.dispatcher(opcode, 0, 0, ptr, 0.F);
    }
    // Any window will do: nothing is shown in it.
    VstIntPtr open() { return dispatch(effEditOpen, &plugin); }

    const std::unique_ptr<ZelvatoneEngine> engine = std::make_unique<ZelvatoneEngine>();
    VSTGuiVSTInterface plugin{hostOfNothing, engine.get(), 61546};
};

TEST_F(EditorWithoutPictures, SaysSoAndReturnsThatItIsOpen) {
    testing::internal::CaptureStdout();
    EXPECT_EQ(open(), 1);
    dispatch(effEditClose);
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "opening editor\nError: Zelv pixmaps not found on disk!\n");
}

TEST_F(EditorWithoutPictures, TakesParametersAllTheSame) {
    EXPECT_EQ(open(), 1);
    plugin.setParameter(20, 0.25F);
    dispatch(effEditIdle);
    EXPECT_EQ(plugin.getParameter(20), 0.25F);
    plugin.setProgram(3);
    EXPECT_EQ(plugin.getProgram(), 3);
    dispatch(effEditClose);
    dispatch(effEditIdle);
}

TEST_F(EditorWithoutPictures, OpensAndClosesAsOftenAsOneLikes) {
    for (int round = 0; round < 3; ++round) {
        EXPECT_EQ(open(), 1);
        EXPECT_EQ(open(), 1);
        dispatch(effEditClose);
        dispatch(effEditClose);
    }
}

} // namespace
} // namespace test
} // namespace zelvatone

// A host loads a module, unloads it, and loads it again. This program itself does not link the
// toolkit nor what it is built on: nothing but the module keeps them in memory.
#include <gtest/gtest.h>

#include <dlfcn.h>

namespace {

TEST(Module, WritesTheSameAfterItWasUnloadedAndLoadedAgain) {
    int firstWidth = 0;
    for (int load = 0; load < 3; ++load) {
        void* module = dlopen(VSTGUI_RELOAD_MODULE, RTLD_NOW | RTLD_LOCAL);
        ASSERT_NE(module, nullptr) << VSTGUI_RELOAD_MODULE;
        const auto widthOfText =
            reinterpret_cast<int (*)(const char*)>(dlsym(module, "widthOfText"));
        ASSERT_NE(widthOfText, nullptr);
        const int width = widthOfText("Mode Shift");
        EXPECT_GT(width, 20);
        firstWidth = load == 0 ? width : firstWidth;
        EXPECT_EQ(width, firstWidth);
        EXPECT_EQ(dlclose(module), 0);
    }
}

} // namespace

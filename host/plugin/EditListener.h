// What a plug-in reports to its host while the user works in its editor.
#pragma once

namespace zelvatone {

// Plug-ins call from any thread; ours from the one that gives its editor turns. Nothing may be
// thrown: the plug-in is between the caller and the code that could catch it.
class EditListener {
public:
    EditListener() = default;
    virtual ~EditListener() = default;
    EditListener(const EditListener&) = delete;
    EditListener& operator=(const EditListener&) = delete;

    // The user takes hold of a parameter, moves it to a normalised value, lets go of it.
    virtual void onBeginEdit(int parameter) noexcept = 0;
    virtual void onAutomate(int parameter, float value) noexcept = 0;
    virtual void onEndEdit(int parameter) noexcept = 0;
    // The editor wants another size, in pixels, both above 0.
    virtual void onSizeWindow(int width, int height) noexcept = 0;
};

} // namespace zelvatone

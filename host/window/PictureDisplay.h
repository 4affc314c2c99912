// A place to open windows on where there is no desktop.
#pragma once

namespace zelvatone {

// While it lives there is a display: the user's, or else one of our own without a screen. One
// implementation a platform; one object at a time, made before any window and any plug-in.
class PictureDisplay {
public:
    // Throws InputError when there is no display and none can be started.
    PictureDisplay();
    ~PictureDisplay(); // NOLINT(performance-trivially-destructible): only on Windows it is
    PictureDisplay(const PictureDisplay&) = delete;
    PictureDisplay& operator=(const PictureDisplay&) = delete;

private:
    int server_ = -1; // our own server's process, where there is one
};

} // namespace zelvatone

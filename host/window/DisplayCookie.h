// The key to a display of our own.
#pragma once

#include <string>

namespace zelvatone {

// A random number that an X server asks of its clients, in a file that is in memory alone and that
// no other user can open. It is gone with the object and with the process, however that ends.
class DisplayCookie {
public:
    // Throws InputError when it cannot be made.
    DisplayCookie();
    ~DisplayCookie();
    DisplayCookie(const DisplayCookie&) = delete;
    DisplayCookie& operator=(const DisplayCookie&) = delete;

    // Of the file, for this process and for those that it starts, while they keep it open.
    int descriptor() const { return descriptor_; }
    // The file's name, for this process and others of this user.
    std::string path() const;

private:
    int descriptor_ = -1;
};

} // namespace zelvatone

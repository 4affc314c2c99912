// Makes an OGG file the same on every writing.
#pragma once

#include "host/files/ByteTarget.h"

namespace zelvatone {

// The writing library marks each page of a stream with a number drawn at random. Gives every page
// of the single stream in `file` the number 1 and a new checksum. Throws InputError when the file
// cannot be read back or written.
void settleOggSerial(ByteTarget& file);

} // namespace zelvatone

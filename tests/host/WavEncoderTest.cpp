// WAV files of our own making, as the writing library reads them.
#include "audio/WavEncoder.h"

#include "support/SoundFile.h"
#include "support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace zelvatone {
namespace {


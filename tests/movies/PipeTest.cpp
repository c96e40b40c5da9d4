#include "movies/qt/ShockwaveFlash.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace {

TEST(PipeInPlaceOfAMovie, IsNotWaitedFor) {
    const TemporaryFolder folder;
    const auto pipe = folder.path() / "pipe.swf";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    ShockwaveFlash control;
    control.setMovie(pipe);
    EXPECT_FALSE(control.isReading());
    EXPECT_FALSE(control.isAwake());
}

}  // namespace

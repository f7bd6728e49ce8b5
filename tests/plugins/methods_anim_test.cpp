// SPDX-License-Identifier: GPL-3.0-or-later
#include <filesystem>

#include "anim/frame_store.h"
#include "tests/plugins/method_fixture.h"
#include "tests/support/pixels.h"

namespace wib::testing {
namespace {

class AnimationMethods : public MethodFixture {
  protected:
    FrameStore& frames = parts.frames;
};

TEST_F(AnimationMethods, APlugInStepsThroughFramesAndWritesTheirPlanes) {
    SetPixel(doc, 1, 1, {40, 50, 60});
    ASSERT_EQ(errorOf("Wib_CreateAnim", Params(3)), 0);
    EXPECT_EQ(answer("Wib_GetTotalFrames").get().as<int>(), 3);

    Plane red(8, 6, 7);
    ASSERT_EQ(errorOf("Wib_SetRFrame", PlaneParams(8, 6, std::string(63, '\x07'))), 5)
        << "the frame index is missing";
    msgpack::sbuffer params;
    msgpack::packer<msgpack::sbuffer> packer(params);
    packer.pack_array(2);
    packer.pack_array(3);
    packer.pack(8);
    packer.pack(6);
    packer.pack_bin(63);
    packer.pack_bin_body(std::string(63, '\x07').data(), 63);
    packer.pack(2);
    ASSERT_EQ(errorOf("Wib_SetRFrame", params), 0);

    ASSERT_EQ(errorOf("Wib_GotoFrame", Params(2)), 0);
    EXPECT_EQ(answer("Wib_GetCurrentFrame").get().as<int>(), 2);
    EXPECT_EQ(doc.RBuffer.at(1, 1), 7);
    EXPECT_EQ(doc.GBuffer.at(1, 1), 50) << "the other planes were copied from the image";
    EXPECT_TRUE(planeEquals(answer("Wib_GetRFrame", Params(2)).get(), red));
    EXPECT_EQ(errorOf("Wib_GetRFrame", Params(3)), 9);

    ASSERT_EQ(errorOf("Anim_Set_Name", Params("walk cycle")), 0);
    EXPECT_EQ(answer("Anim_Get_Name").get().as<std::string>(), "walk cycle");
    ASSERT_EQ(errorOf("Wib_FreeAnim", Params()), 0);
    EXPECT_EQ(answer("Wib_GetTotalFrames").get().as<int>(), 0);
}

}  // namespace
}  // namespace wib::testing

// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "plugins/rpc_error.h"
#include "tests/plugins/method_fixture.h"

namespace wib::testing {
namespace {

using Buffers = MethodFixture;

std::string Bytes(std::size_t count, char value) {
    return std::string(count, value);
}

TEST_F(Buffers, PixelsPackColourBothWays) {
    doc.RBuffer.at(2, 3) = 1;
    doc.GBuffer.at(2, 3) = 2;
    doc.BBuffer.at(2, 3) = 3;
    EXPECT_EQ(answer("Wib_GetRGB", Params(2, 3)).get().as<int>(), 197121);
    EXPECT_EQ(answer("Wib_GetG", Params(2, 3)).get().as<int>(), 2);

    EXPECT_EQ(errorOf("Wib_SetRGB", Params(8, 6, 40, 50, 60)), 0);  // the spare corner
    EXPECT_EQ(doc.RBuffer.at(8, 6), 40);
    EXPECT_EQ(doc.GBuffer.at(8, 6), 50);
    EXPECT_EQ(doc.BBuffer.at(8, 6), 60);
    EXPECT_EQ(answer("Wib_BufferWidth").get().as<int>(), 8);
    EXPECT_EQ(answer("Wib_BufferHeight").get().as<int>(), 6);
}

TEST_F(Buffers, CoordinatesOutsideThePlaneAreError9AndOutsideShortRangeError5) {
    const Plane red = doc.RBuffer;
    EXPECT_EQ(errorOf("Wib_GetRGB", Params(9, 0)), kErrorSubscript);
    EXPECT_EQ(errorOf("Wib_GetB", Params(0, -1)), kErrorSubscript);
    EXPECT_EQ(errorOf("Wib_SetRGB", Params(0, 7, 0, 0, 0)), kErrorSubscript);
    EXPECT_EQ(errorOf("Wib_GetR", Params(40000, 0)), kErrorBadCall);
    EXPECT_EQ(errorOf("Wib_GetR", Params(0, -32769)), kErrorBadCall);
    EXPECT_EQ(errorOf("Wib_SetRGB", Params(0, 0, 256, 0, 0)), kErrorBadCall);
    EXPECT_EQ(errorOf("Wib_SetRGB", Params(0, 0, 0, -1, 0)), kErrorBadCall);
    EXPECT_TRUE(red.sameShape(doc.RBuffer));
    EXPECT_EQ(std::memcmp(red.data(), doc.RBuffer.data(), red.byteCount()), 0);
}

TEST_F(Buffers, WrongArgumentCountsAndTypesAreError5) {
    EXPECT_EQ(errorOf("Wib_GetRGB", Params(1)), kErrorBadCall);
    EXPECT_EQ(errorOf("Wib_GetRGB", Params(1, 2, 3)), kErrorBadCall);
    EXPECT_EQ(errorOf("Wib_GetRGB", Params(std::string("1"), 2)), kErrorBadCall);
    EXPECT_EQ(errorOf("Wib_GetRGB", Params(1.5, 2)), kErrorBadCall);
    EXPECT_EQ(errorOf("Wib_BufferWidth", Params(0)), kErrorBadCall);
    EXPECT_EQ(errorOf("Wib_RenameBuffer", Params(std::string("\xff\xfe"))), kErrorBadCall);
    const CallResult result = call("Wib_GetRGB", Params(1));
    ASSERT_TRUE(result.error);
    EXPECT_EQ(result.error->message,
              "Invalid procedure call or argument: Wib_GetRGB takes 2 arguments, not 1");
}

TEST_F(Buffers, UnknownMethodIsError438) {
    const CallResult result = call("Wib_NoSuchThing");
    ASSERT_TRUE(result.error);
    EXPECT_EQ(result.error->code, kErrorUnknownMethod);
    EXPECT_EQ(result.error->message, "Object doesn't support this property or method");
}

TEST_F(Buffers, PlaneGettersAnswerCopiesOfEveryPlane) {
    doc.SwapG.at(4, 5) = 17;
    doc.ABuffer.at(1, 1) = 3;
    EXPECT_TRUE(planeEquals(answer("Wib_GetRBuffer").get(), doc.RBuffer));
    EXPECT_TRUE(planeEquals(answer("Wib_GetABuffer").get(), doc.ABuffer));
    EXPECT_TRUE(planeEquals(answer("Wib_GetSwapGBuffer").get(), doc.SwapG));
}

// Which setter complains of a plane of another size is the document's
// business; on the wire a mismatch is no error.
TEST_F(Buffers, PlaneSettersStoreWhatArrives) {
    std::string ramp(9 * 7, 0);
    for (std::size_t i = 0; i < ramp.size(); ++i) {
        ramp[i] = static_cast<char>(i * 3);
    }
    EXPECT_EQ(errorOf("Wib_SetRbuffer", PlaneParams(8, 6, ramp)), 0);
    EXPECT_EQ(errorOf("Wib_SetSwapBBuffer", PlaneParams(8, 6, ramp)), 0);
    EXPECT_EQ(doc.RBuffer.at(8, 6), 62 * 3);
    EXPECT_EQ(doc.SwapB.at(1, 1), 10 * 3);
    EXPECT_EQ(errorOf("Wib_SetGBuffer", PlaneParams(3, 3, Bytes(4 * 4, 99))), 0);
    EXPECT_EQ(doc.GBuffer.ubX(), 8);
}

TEST_F(Buffers, APlaneWhoseBytesDoNotMatchItsBoundsIsError5) {
    EXPECT_EQ(errorOf("Wib_SetRbuffer", PlaneParams(8, 6, Bytes(9 * 7 - 1, 0))), kErrorBadCall);
    EXPECT_EQ(errorOf("Wib_SetRbuffer", PlaneParams(8, 6, Bytes(9 * 7 + 1, 0))), kErrorBadCall);
    EXPECT_EQ(errorOf("Wib_SetGBuffer", PlaneParams(-2, 6, "")), kErrorBadCall);
    EXPECT_EQ(errorOf("Wib_SetGBuffer", Params(8, 6, std::string(63, 0))), kErrorBadCall);
    EXPECT_EQ(doc.RBuffer.at(0, 0), 255);
    EXPECT_TRUE(host.prompter.messages.empty());
}

TEST_F(Buffers, AlphaSwitchesBoundsAndBrushPlanes) {
    EXPECT_EQ(errorOf("Wib_AlphaOn", Params()), 0);
    EXPECT_EQ(answer("Wib_GetAlphabits").get().as<int>(), 255);
    EXPECT_EQ(host.view.refreshes, 2);  // the new document's, then the switch's
    EXPECT_EQ(errorOf("Wib_AlphaOff", Params()), 0);
    EXPECT_EQ(answer("Wib_GetAlphabits").get().as<int>(), 0);

    std::string alpha(9 * 7, 0);
    alpha[2 * 9 + 3] = 1;  // (3, 2)
    alpha[4 * 9 + 5] = 1;  // (5, 4)
    ASSERT_EQ(errorOf("Wib_SetABuffer", PlaneParams(8, 6, alpha)), 0);
    EXPECT_EQ(answer("Wib_GetAlphaBounds").get().as<std::vector<int>>(),
              (std::vector<int>{3, 2, 5, 4}));

    EXPECT_EQ(answer("Wib_GetBrushRBuffer").get().as<int>(), -1);
    host.workspace.brush.assign(Plane(2, 1, 1), Plane(2, 1, 2), Plane(2, 1, 3), Plane(2, 1, 7));
    host.workspace.brush.setActive(true);
    EXPECT_TRUE(planeEquals(answer("Wib_GetBrushABuffer").get(), Plane(2, 1, 7)));
}

TEST_F(Buffers, NewClearAndResizeChangeTheDocument) {
    EXPECT_EQ(errorOf("Wib_NewBuffer", Params(20, 10)), 0);
    EXPECT_EQ(doc.width, 20);
    EXPECT_EQ(doc.RBuffer.ubY(), 10);

    EXPECT_EQ(errorOf("Wib_ClearBuffer", Params(1, 2, 3)), 0);
    EXPECT_EQ(doc.BBuffer.at(19, 9), 3);

    EXPECT_EQ(errorOf("Wib_ChangeBufferSize", Params(23, 10, 9, 9, 9, 4)), 0);
    EXPECT_EQ(doc.width, 23);
    EXPECT_EQ(doc.GBuffer.at(0, 0), 9);  // new area on the left
    EXPECT_EQ(doc.GBuffer.at(2, 0), 2);  // 1.5 rounds to even 2

    // A size the program refuses gets its message and changes nothing; one that
    // does not fit 16 bits never reaches it.
    host.prompter.messages.clear();
    EXPECT_EQ(errorOf("Wib_NewBuffer", Params(0, 10)), 0);
    EXPECT_EQ(host.prompter.messages.size(), 1u);
    EXPECT_EQ(errorOf("Wib_NewBuffer", Params(70000, 10)), kErrorBadCall);
    EXPECT_EQ(doc.width, 23);
}

TEST_F(Buffers, RenameGivesTheDocumentTheNameInItsOwnFolder) {
    doc.FileName = "/pictures/beach.tga";
    EXPECT_EQ(errorOf("Wib_RenameBuffer", Params(std::string("sunset.tga"))), 0);
    EXPECT_EQ(doc.FileName, "/pictures/sunset.tga");
    EXPECT_EQ(errorOf("Wib_RenameBuffer", Params(std::string("/other/dusk.tga"))), 0);
    EXPECT_EQ(doc.FileName, "/other/dusk.tga");
}

}  // namespace
// Wib_DoAlphaBlend takes three planes and the flag.
msgpack::sbuffer BlendParams(int ubX, int ubY, const std::string& bytes, int flag) {
    msgpack::sbuffer buffer;
    msgpack::packer<msgpack::sbuffer> packer(buffer);
    packer.pack_array(4);
    for (int plane = 0; plane < 3; ++plane) {
        packer.pack_array(3);
        packer.pack(ubX);
        packer.pack(ubY);
        packer.pack_bin(static_cast<std::uint32_t>(bytes.size()));
        packer.pack_bin_body(bytes.data(), static_cast<std::uint32_t>(bytes.size()));
    }
    packer.pack(flag);
    return buffer;
}

TEST_F(Buffers, AlphaBlendMixesThreePlanesInThroughTheMatte) {
    doc.ABuffer.fill(255);
    doc.ABuffer.at(1, 0) = 0;
    doc.ABuffer.at(2, 0) = 51;
    ClearImage(doc, {100, 100, 100});
    const std::string grey(9 * 7, static_cast<char>(200));
    ASSERT_EQ(errorOf("Wib_DoAlphaBlend", BlendParams(8, 6, grey, 0)), 0);
    EXPECT_EQ(doc.RBuffer.at(0, 0), 200);
    EXPECT_EQ(doc.RBuffer.at(1, 0), 100);
    EXPECT_EQ(doc.RBuffer.at(2, 0), 120) << "(200 x 51 + 100 x 204 + 127) / 255";
    EXPECT_TRUE(doc.modified);
    ASSERT_EQ(errorOf("Wib_DoAlphaBlend", BlendParams(8, 6, std::string(63, '\0'), 1)), 0);
    EXPECT_EQ(doc.RBuffer.at(1, 0), 0) << "flag 1 weighs by 255 - alpha";
    EXPECT_EQ(doc.RBuffer.at(0, 0), 200);

    EXPECT_EQ(errorOf("Wib_DoAlphaBlend", BlendParams(7, 6, std::string(56, '\0'), 0)),
              kErrorBadCall);
    EXPECT_EQ(errorOf("Wib_DoAlphaBlend", BlendParams(8, 6, grey, 2)), kErrorBadCall);
    EXPECT_EQ(doc.RBuffer.at(1, 0), 0);
}

}  // namespace wib::testing

// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <algorithm>
#include <map>

#include "core/layer_edit.h"
#include "plugins/rpc_error.h"
#include "tests/plugins/method_fixture.h"

namespace wib::testing {
namespace {

class LayerMethods : public MethodFixture {
  protected:
    int integer(const std::string& method, const msgpack::sbuffer& params) {
        return answer(method, params).get().as<int>();
    }
    int count() { return answer("Wib_GetLayerCount").get().as<int>(); }
    int current() { return answer("Wib_GetCurrentLayer").get().as<int>(); }

    // A layer index and a plane [ubX, ubY, bin], the setters' arguments.
    static msgpack::sbuffer IndexPlaneParams(int index, int ubX, int ubY,
                                             const std::string& bytes) {
        msgpack::sbuffer buffer;
        msgpack::packer<msgpack::sbuffer> packer(buffer);
        packer.pack_array(2);
        packer.pack(index);
        packer.pack_array(3);
        packer.pack(ubX);
        packer.pack(ubY);
        packer.pack_bin(static_cast<std::uint32_t>(bytes.size()));
        packer.pack_bin_body(bytes.data(), static_cast<std::uint32_t>(bytes.size()));
        return buffer;
    }
    // A plane of the document's shape, each byte from its position.
    static std::string Ramp(int step) {
        std::string bytes(9 * 7, 0);
        for (std::size_t i = 0; i < bytes.size(); ++i) {
            bytes[i] = static_cast<char>(i * static_cast<std::size_t>(step));
        }
        return bytes;
    }
    static Plane RampPlane(int step) {
        const std::string bytes = Ramp(step);
        Plane plane(8, 6);
        std::copy(bytes.begin(), bytes.end(), plane.data());
        return plane;
    }
    static bool SamePixels(const Plane& a, const Plane& b) {
        return a.sameShape(b) && std::memcmp(a.data(), b.data(), a.byteCount()) == 0;
    }
};

TEST_F(LayerMethods, AddSelectAndDeleteWalkTheStack) {
    EXPECT_EQ(count(), 1);
    EXPECT_EQ(current(), 0);
    doc.modified = false;
    ASSERT_EQ(errorOf("Wib_AddLayer", Params()), 0);
    EXPECT_EQ(count(), 2);
    EXPECT_EQ(current(), 1);
    EXPECT_TRUE(doc.modified);
    EXPECT_EQ(doc.Coverage.at(3, 3), 0) << "the new layer starts clear";

    ASSERT_EQ(errorOf("Wib_SetCurrentLayer", Params(0)), 0);
    EXPECT_EQ(current(), 0);
    EXPECT_TRUE(doc.Coverage.empty()) << "the background is opaque";
    EXPECT_EQ(errorOf("Wib_SetCurrentLayer", Params(2)), kErrorSubscript);
    EXPECT_EQ(errorOf("Wib_SetCurrentLayer", Params(-1)), kErrorSubscript);
    EXPECT_EQ(current(), 0);

    EXPECT_EQ(errorOf("Wib_DeleteLayer", Params(2)), kErrorSubscript);
    ASSERT_EQ(errorOf("Wib_DeleteLayer", Params(1)), 0);
    EXPECT_EQ(count(), 1);
    // The last layer stays: the program says why, the call itself succeeds.
    EXPECT_EQ(errorOf("Wib_DeleteLayer", Params(0)), 0);
    EXPECT_EQ(count(), 1);
    ASSERT_FALSE(host.prompter.messages.empty());
    EXPECT_EQ(host.prompter.messages.back(), kLastLayerMessage);
}

TEST_F(LayerMethods, OpacityAndModeByNumberAndName) {
    call("Wib_AddLayer");
    ASSERT_EQ(errorOf("Wib_SetLayerOpacity", Params(1, 100)), 0);
    EXPECT_EQ(integer("Wib_GetLayerOpacity", Params(1)), 100);
    EXPECT_EQ(integer("Wib_GetLayerOpacity", Params(0)), 255);
    EXPECT_EQ(errorOf("Wib_SetLayerOpacity", Params(1, 256)), kErrorBadCall);
    EXPECT_EQ(errorOf("Wib_SetLayerOpacity", Params(2, 10)), kErrorSubscript);
    EXPECT_EQ(integer("Wib_GetLayerOpacity", Params(1)), 100);

    ASSERT_EQ(errorOf("Wib_SetLayerMode", Params(1, 2)), 0);
    EXPECT_EQ(integer("Wib_GetLayerMode", Params(1)), 2);  // screen
    ASSERT_EQ(errorOf("Wib_SetLayerMode", Params(1, std::string("soft-light"))), 0);
    EXPECT_EQ(integer("Wib_GetLayerMode", Params(1)), 9);
    ASSERT_EQ(errorOf("Wib_SetLayerMode", Params(0, std::string("subtract"))), 0);
    EXPECT_EQ(integer("Wib_GetLayerMode", Params(0)), 17);

    // Neither a mode nor a layer: error, and the mode stays.
    EXPECT_EQ(errorOf("Wib_SetLayerMode", Params(1, std::string("dissolve"))), kErrorBadCall);
    EXPECT_EQ(errorOf("Wib_SetLayerMode", Params(1, 18)), kErrorBadCall);
    EXPECT_EQ(errorOf("Wib_SetLayerMode", Params(1, -1)), kErrorBadCall);
    EXPECT_EQ(errorOf("Wib_SetLayerMode", Params(1, 2.5)), kErrorBadCall);
    EXPECT_EQ(errorOf("Wib_SetLayerMode", Params(5, std::string("normal"))), kErrorSubscript);
    EXPECT_EQ(errorOf("Wib_GetLayerMode", Params(5)), kErrorSubscript);
    EXPECT_EQ(integer("Wib_GetLayerMode", Params(1)), 9);
}

TEST_F(LayerMethods, PlanesRoundTripForTheCurrentAndAnotherLayer) {
    call("Wib_AddLayer");  // layer 1 current, layer 0 stored
    const Plane before = doc.RBuffer;
    ASSERT_EQ(errorOf("Wib_SetLayerR", PlaneParams(8, 6, Ramp(3))), kErrorBadCall)
        << "the index comes first";
    ASSERT_EQ(errorOf("Wib_SetLayerR", IndexPlaneParams(0, 8, 6, Ramp(3))), 0);
    EXPECT_TRUE(planeEquals(answer("Wib_GetLayerR", Params(0)).get(), RampPlane(3)));
    EXPECT_TRUE(SamePixels(doc.RBuffer, before)) << "the current layer is untouched";

    // The current layer's planes are the main buffer and its coverage.
    ASSERT_EQ(errorOf("Wib_SetLayerG", IndexPlaneParams(1, 8, 6, Ramp(5))), 0);
    EXPECT_TRUE(SamePixels(doc.GBuffer, RampPlane(5)));
    ASSERT_EQ(errorOf("Wib_SetLayerA", IndexPlaneParams(1, 8, 6, Ramp(7))), 0);
    EXPECT_TRUE(SamePixels(doc.Coverage, RampPlane(7)));
    EXPECT_TRUE(planeEquals(answer("Wib_GetLayerA", Params(1)).get(), RampPlane(7)));

    // An opaque layer answers full coverage.
    EXPECT_TRUE(planeEquals(answer("Wib_GetLayerA", Params(0)).get(), Plane(8, 6, 255)));

    // Choosing the other layer brings its stored planes into the main buffer.
    call("Wib_SetCurrentLayer", Params(0));
    EXPECT_TRUE(SamePixels(doc.RBuffer, RampPlane(3)));
    EXPECT_TRUE(planeEquals(answer("Wib_GetLayerG", Params(1)).get(), RampPlane(5)));
    EXPECT_TRUE(planeEquals(answer("Wib_GetLayerB", Params(1)).get(), Plane(8, 6, 0)));
}

TEST_F(LayerMethods, WrongSizesChangeNothingAndBadIndicesAreError9) {
    call("Wib_AddLayer");
    doc.modified = false;
    const Plane green = doc.GBuffer;
    EXPECT_EQ(errorOf("Wib_SetLayerG", IndexPlaneParams(1, 3, 3, std::string(16, 9))), 0);
    EXPECT_EQ(errorOf("Wib_SetLayerB", IndexPlaneParams(0, 9, 6, std::string(70, 9))), 0);
    EXPECT_TRUE(SamePixels(doc.GBuffer, green));
    EXPECT_TRUE(planeEquals(answer("Wib_GetLayerB", Params(0)).get(), Plane(8, 6, 255)));
    EXPECT_FALSE(doc.modified);
    EXPECT_TRUE(host.prompter.messages.empty()) << "silent, as the green setter";

    EXPECT_EQ(errorOf("Wib_GetLayerR", Params(2)), kErrorSubscript);
    EXPECT_EQ(errorOf("Wib_GetLayerA", Params(-1)), kErrorSubscript);
    EXPECT_EQ(errorOf("Wib_SetLayerR", IndexPlaneParams(2, 8, 6, Ramp(1))), kErrorSubscript);
    EXPECT_EQ(errorOf("Wib_GetLayerInfo", Params(7)), kErrorSubscript);
    EXPECT_EQ(errorOf("Wib_GetLayerOpacity", Params(std::string("0"))), kErrorBadCall);
}

TEST_F(LayerMethods, InfoAnswersEveryPropertyByName) {
    call("Wib_AddLayer");
    call("Wib_SetLayerOpacity", Params(1, 100));
    call("Wib_SetLayerMode", Params(1, std::string("screen")));
    ChangeLayer(host.workspace, 1, {.visible = false, .lockPixels = true});

    const auto upper = answer("Wib_GetLayerInfo", Params(1));
    const auto info = upper.get().as<std::map<std::string, msgpack::object>>();
    ASSERT_EQ(info.size(), 5u);
    EXPECT_EQ(info.at("name").as<std::string>(), "Layer 1");
    EXPECT_EQ(info.at("opacity").as<int>(), 100);
    EXPECT_EQ(info.at("mode").as<std::string>(), "screen");
    EXPECT_EQ(info.at("visible").as<int>(), 0);
    EXPECT_EQ(info.at("locked").as<int>(), -1);

    const auto bottom = answer("Wib_GetLayerInfo", Params(0));
    const auto background = bottom.get().as<std::map<std::string, msgpack::object>>();
    EXPECT_EQ(background.at("name").as<std::string>(), "Background");
    EXPECT_EQ(background.at("mode").as<std::string>(), "normal");
    EXPECT_EQ(background.at("visible").as<int>(), -1);
    EXPECT_EQ(background.at("locked").as<int>(), 0);
}

TEST_F(LayerMethods, MergeToCurrentTakesTheLayerAboveIntoTheCurrentOne) {
    doc.RBuffer.fill(20);
    call("Wib_AddLayer");
    call("Wib_AddLayer");  // layers 1 and 2, clear
    call("Wib_SetCurrentLayer", Params(1));
    doc.RBuffer.fill(220);
    doc.Coverage.at(2, 1) = 255;
    call("Wib_SetLayerMode", Params(1, std::string("multiply")));
    ChangeLayer(host.workspace, 2, {.name = std::string("top")});
    call("Wib_SetCurrentLayer", Params(0));

    ASSERT_EQ(errorOf("Wib_MergeToCurrent", Params()), 0);
    EXPECT_EQ(count(), 2);
    EXPECT_EQ(current(), 0);
    EXPECT_EQ(LayerAt(host.workspace, 0).name, "Background");
    EXPECT_EQ(LayerAt(host.workspace, 0).mode, BlendMode::Normal);
    EXPECT_EQ(LayerAt(host.workspace, 1).name, "top");
    EXPECT_EQ(doc.RBuffer.at(2, 1), 17);  // multiply: 20 x 220 / 255 = 17.25
    EXPECT_EQ(doc.RBuffer.at(0, 0), 20);  // clear there: the background shows

    // The top layer has nothing above it.
    call("Wib_SetCurrentLayer", Params(1));
    ASSERT_EQ(errorOf("Wib_MergeToCurrent", Params()), 0);
    EXPECT_EQ(count(), 2);
    EXPECT_TRUE(host.prompter.messages.empty());
}

TEST_F(LayerMethods, ThePluginsOwnUndoStepTakesALayerChangeBack) {
    call("Wib_AddLayer");
    call("Wib_SaveUndo");
    call("Wib_SetLayerR", IndexPlaneParams(0, 8, 6, Ramp(3)));
    call("Wib_SetLayerOpacity", Params(1, 40));
    call("Wib_RestoreUndo");
    EXPECT_TRUE(planeEquals(answer("Wib_GetLayerR", Params(0)).get(), Plane(8, 6, 255)));
    EXPECT_EQ(integer("Wib_GetLayerOpacity", Params(1)), 255);
}

}  // namespace
}  // namespace wib::testing

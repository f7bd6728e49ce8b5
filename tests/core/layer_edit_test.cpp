// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/layer_edit.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/commands.h"
#include "core/layer_commands.h"
#include "core/layer_composite.h"
#include "core/undo.h"
#include "core/workspace.h"
#include "tests/support/test_host.h"

namespace wib {
namespace {

class Layers : public ::testing::Test {
  protected:
    void SetUp() override {
        host.newDocument(5, 4);
        RegisterLayerCommands(commands);
    }
    Workspace& ws() { return host.workspace; }
    Document& doc() { return host.workspace.document; }
    CommandOutcome::Status run(const std::string& id,
                               const std::map<std::string, ParamValue>& values = {}) {
        return commands.run(ws(), id, values).status;
    }
    // Paints the current layer one colour, covering only (x, y) on an upper layer.
    void paintCurrent(std::uint8_t value, int x, int y) {
        doc().RBuffer.fill(value);
        doc().GBuffer.fill(value);
        doc().BBuffer.fill(value);
        if (!doc().Coverage.empty()) {
            doc().Coverage.at(x, y) = 255;
        }
    }
    LayerPixels composite() { return CompositePicture(ws()); }

    testing::TestHost host;
    CommandRegistry commands;
};

TEST_F(Layers, NewPictureHasOneOpaqueBackground) {
    EXPECT_EQ(LayerCount(ws()), 1);
    EXPECT_EQ(LayerAt(ws(), 0).name, "Background");
    EXPECT_TRUE(IsFlatPicture(ws()));
    doc().RBuffer.fill(40);
    EXPECT_EQ(composite().r.at(2, 2), 40);
    EXPECT_EQ(composite().a.at(2, 2), 255);
}

TEST_F(Layers, NewLayerIsTransparentAboveAndCurrent) {
    paintCurrent(10, 0, 0);
    ASSERT_EQ(run("layer.new"), CommandOutcome::Status::Done);
    EXPECT_EQ(LayerCount(ws()), 2);
    EXPECT_EQ(CurrentLayer(ws()), 1);
    EXPECT_EQ(LayerAt(ws(), 1).name, "Layer 1");
    EXPECT_FALSE(IsFlatPicture(ws()));
    EXPECT_EQ(composite().r.at(3, 3), 10);  // nothing of the new layer shows yet
    paintCurrent(200, 3, 3);
    const LayerPixels out = composite();
    EXPECT_EQ(out.r.at(3, 3), 200);
    EXPECT_EQ(out.r.at(0, 0), 10);
    EXPECT_EQ(out.a.at(0, 0), 255);
}

TEST_F(Layers, SwitchingKeepsEachLayersPixels) {
    paintCurrent(10, 0, 0);
    run("layer.new");
    paintCurrent(90, 1, 1);
    ASSERT_EQ(run("layer.select", {{"index", 0LL}}), CommandOutcome::Status::Done);
    EXPECT_EQ(doc().RBuffer.at(1, 1), 10);
    EXPECT_TRUE(doc().Coverage.empty());
    run("layer.select", {{"index", 1LL}});
    EXPECT_EQ(doc().RBuffer.at(1, 1), 90);
    EXPECT_EQ(doc().Coverage.at(1, 1), 255);
    EXPECT_EQ(doc().Coverage.at(0, 1), 0);
    EXPECT_EQ(run("layer.select", {{"index", 7LL}}), CommandOutcome::Status::Refused);
}

TEST_F(Layers, SetChangesOnlyWhatItIsGiven) {
    run("layer.new");
    run("layer.set", {{"index", 1LL}, {"opacity", 100LL}, {"mode", std::string("screen")}});
    run("layer.select", {{"index", 0LL}});
    // Named while layer 0 is current: layer 1 keeps the values it was given.
    run("layer.set", {{"index", 1LL}, {"name", std::string("ink")}});
    EXPECT_EQ(LayerAt(ws(), 1).name, "ink");
    EXPECT_EQ(LayerAt(ws(), 1).opacity, 100);
    EXPECT_EQ(LayerAt(ws(), 1).mode, BlendMode::Screen);
    EXPECT_TRUE(LayerAt(ws(), 1).visible);
    EXPECT_EQ(run("layer.set", {{"index", 1LL}, {"mode", 18LL}}),
              CommandOutcome::Status::BadParameter);
    EXPECT_EQ(run("layer.set", {{"index", 1LL}, {"mode", std::string("dissolve")}}),
              CommandOutcome::Status::BadParameter);
    run("layer.set", {{"index", 1LL}, {"visible", 0LL}});
    EXPECT_FALSE(LayerAt(ws(), 1).visible);
}

TEST_F(Layers, MergeDownKeepsLowerNameAsPlainLayer) {
    paintCurrent(20, 0, 0);
    run("layer.set", {{"index", 0LL}, {"name", std::string("paper")}});
    run("layer.new");
    paintCurrent(220, 2, 1);
    run("layer.set", {{"index", 1LL}, {"opacity", 255LL}, {"mode", std::string("multiply")}});
    ASSERT_EQ(run("layer.merge_down"), CommandOutcome::Status::Done);
    EXPECT_EQ(LayerCount(ws()), 1);
    EXPECT_EQ(LayerAt(ws(), 0).name, "paper");
    EXPECT_EQ(LayerAt(ws(), 0).mode, BlendMode::Normal);
    EXPECT_EQ(LayerAt(ws(), 0).opacity, 255);
    // multiply: 20 * 220 / 255 = 17.25
    EXPECT_EQ(doc().RBuffer.at(2, 1), 17);
    EXPECT_EQ(doc().RBuffer.at(0, 0), 20);
    EXPECT_EQ(run("layer.merge_down"), CommandOutcome::Status::Refused);
    EXPECT_EQ(host.prompter.messages.back(), kNoLayerBelowMessage);
}

TEST_F(Layers, OrderDeleteAndLastLayer) {
    run("layer.new");
    run("layer.new");
    ASSERT_EQ(CurrentLayer(ws()), 2);
    run("layer.move_down");
    EXPECT_EQ(CurrentLayer(ws()), 1);
    EXPECT_EQ(LayerAt(ws(), 1).name, "Layer 2");
    EXPECT_EQ(LayerAt(ws(), 2).name, "Layer 1");
    run("layer.delete");
    EXPECT_EQ(LayerCount(ws()), 2);
    EXPECT_EQ(LayerAt(ws(), 1).name, "Layer 1");
    run("layer.flatten");
    EXPECT_EQ(LayerCount(ws()), 1);
    EXPECT_EQ(run("layer.delete"), CommandOutcome::Status::Refused);
    EXPECT_EQ(host.prompter.messages.back(), kLastLayerMessage);
}

TEST_F(Layers, UndoAndRedoWalkLayerChanges) {
    paintCurrent(30, 0, 0);
    SaveUndo(ws());
    run("layer.new");
    paintCurrent(140, 4, 3);
    run("layer.set", {{"index", 1LL}, {"name", std::string("top")}});
    run("layer.merge_down");
    ASSERT_EQ(LayerCount(ws()), 1);
    ASSERT_TRUE(EditUndo(ws()));  // before the merge
    EXPECT_EQ(LayerCount(ws()), 2);
    EXPECT_EQ(LayerAt(ws(), 1).name, "top");
    EXPECT_EQ(CurrentLayer(ws()), 1);
    EXPECT_EQ(doc().Coverage.at(4, 3), 255);
    ASSERT_TRUE(EditUndo(ws()));  // before the rename
    EXPECT_EQ(LayerAt(ws(), 1).name, "Layer 1");
    ASSERT_TRUE(EditUndo(ws()));  // before the new layer
    EXPECT_EQ(LayerCount(ws()), 1);
    EXPECT_EQ(doc().RBuffer.at(4, 3), 30);
    EXPECT_TRUE(doc().Coverage.empty());
    ASSERT_TRUE(EditRedo(ws()));
    EXPECT_EQ(LayerCount(ws()), 2);
    ASSERT_TRUE(EditRedo(ws()));
    ASSERT_TRUE(EditRedo(ws()));
    EXPECT_EQ(LayerCount(ws()), 1);
    EXPECT_EQ(doc().RBuffer.at(4, 3), 140);
}

TEST_F(Layers, SelectIsNoUndoStepAndClearFollowsTheMatte) {
    run("layer.new");
    paintCurrent(50, 1, 0);
    doc().Coverage.fill(255);
    const int steps = ws().undo.UndoSteps;
    run("layer.select", {{"index", 0LL}});
    run("layer.select", {{"index", 1LL}});
    EXPECT_EQ(ws().undo.UndoSteps, steps);
    doc().ABuffer.fill(0);
    doc().ABuffer.at(1, 0) = 255;
    doc().ABuffer.at(2, 0) = 128;
    doc().AlphaBitsFlag = 255;
    run("layer.clear");
    EXPECT_EQ(doc().Coverage.at(1, 0), 0);
    EXPECT_EQ(doc().Coverage.at(2, 0), 127);
    EXPECT_EQ(doc().Coverage.at(3, 0), 255);
}

TEST_F(Layers, MoveTakesALayerAcrossSeveralPlacesInOneUndoStep) {
    SaveUndo(ws());
    run("layer.new");
    run("layer.new");
    run("layer.new");
    paintCurrent(77, 2, 2);  // "Layer 3", on top and current
    const auto names = [this] {
        std::vector<std::string> out;
        for (int i = 0; i < LayerCount(ws()); ++i) {
            out.push_back(LayerAt(ws(), i).name);
        }
        return out;
    };
    ASSERT_EQ(run("layer.move", {{"index", 3LL}, {"to", 1LL}}), CommandOutcome::Status::Done);
    EXPECT_EQ(names(), (std::vector<std::string>{"Background", "Layer 3", "Layer 1", "Layer 2"}));
    EXPECT_EQ(CurrentLayer(ws()), 1);  // the moved layer stays current
    EXPECT_EQ(doc().RBuffer.at(2, 2), 77);

    // Moving another layer past the current one shifts it, keeping the same layer current.
    run("layer.move", {{"index", 0LL}, {"to", 2LL}});
    EXPECT_EQ(names(), (std::vector<std::string>{"Layer 3", "Layer 1", "Background", "Layer 2"}));
    EXPECT_EQ(CurrentLayer(ws()), 0);
    EXPECT_EQ(doc().RBuffer.at(2, 2), 77);
    run("layer.move", {{"index", 3LL}, {"to", 0LL}});
    EXPECT_EQ(CurrentLayer(ws()), 1);
    EXPECT_EQ(LayerAt(ws(), 1).name, "Layer 3");

    EXPECT_EQ(run("layer.move", {{"index", 1LL}, {"to", 1LL}}), CommandOutcome::Status::Refused);
    EXPECT_EQ(run("layer.move", {{"index", 1LL}, {"to", 4LL}}), CommandOutcome::Status::Refused);

    ASSERT_TRUE(EditUndo(ws()));
    ASSERT_TRUE(EditUndo(ws()));
    EXPECT_EQ(names(), (std::vector<std::string>{"Background", "Layer 3", "Layer 1", "Layer 2"}));
    ASSERT_TRUE(EditUndo(ws()));
    EXPECT_EQ(names(), (std::vector<std::string>{"Background", "Layer 1", "Layer 2", "Layer 3"}));
}

TEST_F(Layers, SetLocksOnlyWhenToldAndKeepsTheLockOtherwise) {
    run("layer.set", {{"index", 0LL}, {"locked", -1LL}});
    EXPECT_TRUE(LayerAt(ws(), 0).lockPixels);
    EXPECT_FALSE(LayerAt(ws(), 0).lockAlpha);
    run("layer.set", {{"index", 0LL}, {"opacity", 90LL}});
    EXPECT_TRUE(LayerAt(ws(), 0).lockPixels);
    run("layer.set", {{"index", 0LL}, {"locked", 0LL}});
    EXPECT_FALSE(LayerAt(ws(), 0).lockPixels);
    EXPECT_EQ(LayerAt(ws(), 0).opacity, 90);
}

}  // namespace
}  // namespace wib

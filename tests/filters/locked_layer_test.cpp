// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "core/commands.h"
#include "core/layer_commands.h"
#include "core/layer_edit.h"
#include "core/workspace.h"
#include "filters/combine_filters.h"
#include "tests/support/pixels.h"
#include "tests/support/test_host.h"

namespace wib {
namespace {

using Status = CommandOutcome::Status;

class LockedLayer : public ::testing::Test {
  protected:
    LockedLayer() {
        host.newDocument(3, 2);
        RegisterCombineCommands(registry);
        RegisterLayerCommands(registry);
        SetPixel(doc, 0, 0, {10, 200, 77});
        ChangeLayer(host.workspace, 0, {.lockPixels = true});
    }
    Status run(const std::string& id, const std::map<std::string, ParamValue>& values = {}) {
        return registry.run(host.workspace, id, values).status;
    }
    testing::TestHost host;
    Document& doc = host.workspace.document;
    CommandRegistry registry;
};

TEST_F(LockedLayer, FiltersAreRefusedWithTheReason) {
    // White in the swap: the difference would give the negative.
    doc.SwapR.fill(255);
    doc.SwapG.fill(255);
    doc.SwapB.fill(255);
    doc.modified = false;
    EXPECT_EQ(run("combine.difference"), Status::Refused);  // a plain row operation
    EXPECT_EQ(run("combine.multiply"), Status::Refused);    // a filter through the selection
    EXPECT_EQ(run("swap.exchange"), Status::Refused);
    EXPECT_EQ(PackedPixel(doc, 0, 0), 10 + 200 * 256 + 77 * 65536);
    EXPECT_FALSE(doc.modified);
    ASSERT_EQ(host.prompter.messages.size(), 3u);
    EXPECT_EQ(host.prompter.messages.front(), kLayerLockedMessage);
}

TEST_F(LockedLayer, CommandsThatLeaveThePixelsStillRun) {
    ASSERT_EQ(run("combine.copy_to_swap"), Status::Done);
    EXPECT_EQ(doc.SwapG.at(0, 0), 200);
    ASSERT_EQ(run("layer.set", {{"index", 0LL}, {"name", std::string("inked")}}), Status::Done);
    ASSERT_EQ(run("layer.new"), Status::Done);  // the new layer is unlocked and current
    EXPECT_EQ(run("combine.difference"), Status::Done);
    ASSERT_EQ(run("layer.select", {{"index", 0LL}}), Status::Done);
    EXPECT_EQ(LayerAt(host.workspace, 0).name, "inked");
    EXPECT_TRUE(host.prompter.messages.empty());

    // Unlocked, the filter runs again.
    ChangeLayer(host.workspace, 0, {.lockPixels = false});
    doc.SwapR.fill(255);
    ASSERT_EQ(run("combine.difference"), Status::Done);
    EXPECT_EQ(doc.RBuffer.at(0, 0), 245);
}

}  // namespace
}  // namespace wib

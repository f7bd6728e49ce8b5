// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "core/commands.h"
#include "core/workspace.h"
#include "filters/filter_history.h"
#include "filters/filter_row.h"
#include "tests/support/test_host.h"

namespace wib {
namespace {

using Status = CommandOutcome::Status;

TEST(FilterRepeat, RunsTheLastFilterAgainWithItsValues) {
    testing::TestHost host;
    host.newDocument(2, 2);
    CommandRegistry registry;
    ParamSpec step = IntegerParam("step", "Step", 0, 100, 1);
    registry.add(FilterRow("filter.test.brighten", "Brighten", "Filter/Test", {step},
                           [](const FilterContext& context) {
                               const int by = static_cast<int>(context.values.integer("step"));
                               for (int c = 0; c < 3; ++c) {
                                   context.target[c].fill(
                                       static_cast<std::uint8_t>(context.source[c].at(0, 0) + by));
                               }
                           }));
    registry.add({"view.other", "Other", "View", "", {}, [](Workspace&, const ParamValues&) {
                      return true;
                  }});
    RegisterFilterRepeat(registry);
    Document& doc = host.workspace.document;
    doc.RBuffer.fill(10);

    EXPECT_EQ(registry.run(host.workspace, "filter.repeat", {}).status, Status::Refused);
    EXPECT_EQ(host.prompter.messages.back(), "No filter has been applied yet.");

    ASSERT_EQ(registry.run(host.workspace, "filter.test.brighten", {{"step", 5LL}}).status,
              Status::Done);
    EXPECT_EQ(doc.RBuffer.at(0, 0), 15);
    ASSERT_EQ(registry.run(host.workspace, "view.other", {}).status, Status::Done);
    ASSERT_EQ(registry.run(host.workspace, "filter.repeat", {}).status, Status::Done);
    EXPECT_EQ(doc.RBuffer.at(0, 0), 20) << "the filter again, with step 5, not another command";
    ASSERT_EQ(registry.run(host.workspace, "filter.repeat_with_options", {}).status, Status::Done);
    EXPECT_EQ(doc.RBuffer.at(0, 0), 25) << "no dialog here: the last values stand";
}

}  // namespace
}  // namespace wib

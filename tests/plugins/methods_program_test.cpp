// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <map>

#include "filters/sharpen_filters.h"
#include "plugins/rpc_error.h"
#include "tests/plugins/method_fixture.h"

namespace wib::testing {
namespace {

class Program : public MethodFixture {
  protected:
    Program() {
        controls.values[{"BrushOptions", "HScroll1"}] = 10LL;
        controls.values[{"BrushOptions", "Opacity"}] = 0.5;
    }
};

const msgpack::object& Field(const msgpack::object& map, const std::string& key) {
    for (std::uint32_t i = 0; i < map.via.map.size; ++i) {
        if (map.via.map.ptr[i].key.as<std::string>() == key) {
            return map.via.map.ptr[i].val;
        }
    }
    throw std::runtime_error("no field " + key);
}

TEST_F(Program, ConnectChecksTheToken) {
    EXPECT_EQ(answer("Wib_Connect", Params(std::string("secret"))).get().as<int>(), -1);
    const CallResult wrong = call("Wib_Connect", Params(std::string("secreT")));
    ASSERT_TRUE(wrong.error);
    EXPECT_EQ(wrong.error->code, kErrorPermission);
    EXPECT_EQ(wrong.error->message, "Permission denied");
}

TEST_F(Program, FactsComeFromTheHost) {
    EXPECT_EQ(answer("Wib_GetThreadcount").get().as<int>(), 3);
    EXPECT_EQ(answer("Wib_GetAppDir").get().as<std::string>(), "/opt/wibbleton");
    EXPECT_EQ(answer("Wib_GetTempDir").get().as<std::string>(), "/var/tmp");
}

TEST_F(Program, ListCommandsDescribesTheTableWithCurrentDefaults) {
    const msgpack::object_handle list = answer("Wib_ListCommands");
    const msgpack::object& commandsArray = list.get();
    ASSERT_EQ(commandsArray.via.array.size, commands.all().size());
    const msgpack::object* canvas = nullptr;
    for (std::uint32_t i = 0; i < commandsArray.via.array.size; ++i) {
        if (Field(commandsArray.via.array.ptr[i], "id").as<std::string>() == "image.canvas_size") {
            canvas = &commandsArray.via.array.ptr[i];
        }
    }
    ASSERT_NE(canvas, nullptr);
    EXPECT_EQ(Field(*canvas, "menu").as<std::string>(), "Image");
    const msgpack::object& params = Field(*canvas, "params");
    ASSERT_EQ(params.via.array.size, 4u);
    const msgpack::object& width = params.via.array.ptr[0];
    EXPECT_EQ(Field(width, "name").as<std::string>(), "width");
    EXPECT_EQ(Field(width, "type").as<std::string>(), "integer");
    EXPECT_EQ(Field(width, "default").as<int>(), 8);  // the document's width now
    EXPECT_EQ(Field(width, "max").as<double>(), 16384);
    const msgpack::object& anchor = params.via.array.ptr[2];
    EXPECT_EQ(Field(anchor, "choices").via.array.size, 9u);
}

TEST_F(Program, RunCommandRunsRefusesOrRejects) {
    std::map<std::string, long long> size{{"width", 20}, {"height", 10}};
    EXPECT_EQ(answer("Wib_RunCommand", Params(std::string("file.new"), size)).get().as<int>(), -1);
    EXPECT_EQ(doc.width, 20);
    EXPECT_EQ(doc.height, 10);

    // Nothing to redo: the command refuses.
    EXPECT_EQ(answer("Wib_RunCommand", Params(std::string("edit.redo"))).get().as<int>(), 0);

    const CallResult unknown = call("Wib_RunCommand", Params(std::string("file.frobnicate")));
    ASSERT_TRUE(unknown.error);
    EXPECT_EQ(unknown.error->code, kErrorBadCall);
    EXPECT_NE(unknown.error->message.find("no command file.frobnicate"), std::string::npos);

    std::map<std::string, long long> tooWide{{"width", 0}};
    const CallResult bad = call("Wib_RunCommand", Params(std::string("file.new"), tooWide));
    ASSERT_TRUE(bad.error);
    EXPECT_NE(bad.error->message.find("width must be from 1 to 16384"), std::string::npos);
    std::map<std::string, std::vector<int>> nested{{"width", {1}}};
    EXPECT_EQ(errorOf("Wib_RunCommand", Params(std::string("file.new"), nested)), kErrorBadCall);
    EXPECT_EQ(doc.width, 20);
}

TEST_F(Program, RunCommandTakesAnArrayOfIntegersAsAnIntegerList) {
    RegisterSharpenFilters(commands);
    doc.GBuffer.fill(30);
    std::map<std::string, std::vector<int>> values{{"kernel", {0, 0, 0, 0, 3, 0, 0, 0, 0}}};
    EXPECT_EQ(
        answer("Wib_RunCommand", Params(std::string("filter.convolve"), values)).get().as<int>(),
        -1);
    EXPECT_EQ(doc.GBuffer.at(3, 3), 90);
    std::map<std::string, std::vector<double>> fractional{{"kernel", std::vector<double>(9, 0.5)}};
    EXPECT_EQ(errorOf("Wib_RunCommand", Params(std::string("filter.convolve"), fractional)),
              kErrorBadCall);
}

TEST_F(Program, ControlsAreReadAndSetByName) {
    EXPECT_EQ(answer("Wib_GetControl", Params(std::string("BrushOptions"), std::string("HScroll1")))
                  .get()
                  .as<int>(),
              10);
    EXPECT_EQ(answer("Wib_GetControl", Params(std::string("BrushOptions"), std::string("Opacity")))
                  .get()
                  .as<double>(),
              0.5);
    EXPECT_EQ(
        errorOf("Wib_SetControl", Params(std::string("BrushOptions"), std::string("HScroll1"), 42)),
        0);
    EXPECT_EQ(std::get<long long>(controls.values[{"BrushOptions", "HScroll1"}]), 42);
    EXPECT_EQ(errorOf("Wib_SetControl",
                      Params(std::string("BrushOptions"), std::string("Opacity"), 0.25)),
              0);
    EXPECT_EQ(std::get<double>(controls.values[{"BrushOptions", "Opacity"}]), 0.25);
    EXPECT_EQ(controls.changeHandlerRuns, 2);

    EXPECT_EQ(errorOf("Wib_GetControl", Params(std::string("Nowhere"), std::string("HScroll1"))),
              kErrorBadCall);
    EXPECT_EQ(errorOf("Wib_SetControl", Params(std::string("BrushOptions"), std::string("HScroll1"),
                                               std::string("wide"))),
              kErrorBadCall);
    EXPECT_EQ(controls.changeHandlerRuns, 2);
}

}  // namespace
}  // namespace wib::testing

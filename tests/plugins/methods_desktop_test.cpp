// SPDX-License-Identifier: GPL-3.0-or-later
#include <filesystem>
#include <fstream>
#include <iterator>

#include <unistd.h>

#include "tests/plugins/method_fixture.h"
#include "tests/support/pixels.h"

namespace wib::testing {
namespace {

// Files go to a temporary folder of the test's own.
class DesktopMethods : public MethodFixture {
  protected:
    DesktopMethods() {
        std::filesystem::create_directories(folder);
        automation.tempDir = folder.string();
    }
    ~DesktopMethods() override { std::filesystem::remove_all(folder); }

    std::filesystem::path folder =
        std::filesystem::temp_directory_path() / ("wib-desktop-" + std::to_string(::getpid()));
};

using FormValues = std::map<std::string, msgpack::object>;

std::vector<long long> Integers(const msgpack::object& o) {
    return o.as<std::vector<long long>>();
}

// [title, {name: value, ...}] with a whole number, a number and a text field.
msgpack::sbuffer FormParams(double size) {
    msgpack::sbuffer buffer;
    msgpack::packer<msgpack::sbuffer> packer(buffer);
    packer.pack_array(2);
    packer.pack("Stars");
    packer.pack_map(3);
    packer.pack("count");
    packer.pack(12);
    packer.pack("size");
    packer.pack(size);
    packer.pack("name");
    packer.pack("nova");
    return buffer;
}

TEST_F(DesktopMethods, WallpaperIsTheImageAsABitmapInTheTemporaryFolder) {
    SetPixel(doc, 0, 0, {10, 20, 30});
    doc.FileName = "picture.tga";
    const std::string path = answer("Wib_WallpaperFilename").get().as<std::string>();
    EXPECT_EQ(path, (folder / "wallpaper.bmp").string());
    std::ifstream file(path, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(file), {}};
    // 54 bytes of headers, then 6 rows of 8 pixels, 24 bytes each, bottom row first.
    ASSERT_EQ(bytes.size(), 54u + 6 * 24);
    EXPECT_EQ(bytes.substr(0, 2), "BM");
    EXPECT_EQ(bytes.substr(54 + 5 * 24, 3), std::string("\x1e\x14\x0a")) << "blue, green, red";
    EXPECT_EQ(doc.FileName, "picture.tga");

    automation.tempDir = (folder / "missing").string();
    EXPECT_EQ(answer("Wib_WallpaperFilename").get().as<std::string>(), "");
}

TEST_F(DesktopMethods, TheTitleBarImageGoesToTheWindows) {
    EXPECT_EQ(answer("Wib_ChangeBarImage", Params("/icons/star.png")).get().as<int>(), -1);
    EXPECT_EQ(answer("Wib_ChangeBarImage", Params("")).get().as<int>(), -1);
    EXPECT_EQ(host.view.titleBarImages, (std::vector<std::string>{"/icons/star.png", ""}));
    EXPECT_EQ(errorOf("Wib_ChangeBarImage", Params(3)), 5);
}

TEST_F(DesktopMethods, AFormIsAskedInOneDialogAndAnsweredByName) {
    const msgpack::object_handle headless = answer("Wib_SendFormObject", FormParams(2.5));
    const auto values = headless.get().as<FormValues>();
    EXPECT_EQ(values.at("count").as<int>(), 12) << "no dialog: the starting values";
    EXPECT_EQ(values.at("size").as<double>(), 2.5);
    EXPECT_EQ(values.at("name").as<std::string>(), "nova");

    CommandSpec asked;
    bool cancel = false;
    commands.setDialog([&](const CommandSpec& form, std::map<std::string, ParamValue>& values) {
        asked = form;
        values["count"] = 7LL;
        return !cancel;
    });
    const msgpack::object_handle given = answer("Wib_SendFormObject", FormParams(2.5));
    EXPECT_EQ(given.get().as<FormValues>().at("count").as<int>(), 7);
    EXPECT_EQ(asked.caption, "Stars");
    ASSERT_EQ(asked.params.size(), 3u);
    EXPECT_EQ(asked.params[0].name, "count");
    EXPECT_EQ(asked.params[0].type, ParamType::Integer);
    EXPECT_EQ(asked.params[1].type, ParamType::Text);
    EXPECT_EQ(asked.params[2].type, ParamType::Number);

    cancel = true;
    EXPECT_EQ(answer("Wib_SendFormObject", FormParams(2.5)).get().via.map.size, 0u);
    // msgpack sends a whole double as an integer: 2.5e9 is beyond 32 bits.
    EXPECT_EQ(errorOf("Wib_SendFormObject", FormParams(2.5e9)), 5);
    EXPECT_EQ(errorOf("Wib_SendFormObject", FormParams(-1.5e9 - 0.5)), 5);
}

TEST_F(DesktopMethods, TheGraphicsWindowIsRememberedPerPlugIn) {
    EXPECT_EQ(answer("GS_SetHwnd", Params(1234)).get().as<long long>(), 0);
    EXPECT_EQ(answer("GS_SetHwnd", Params(5678)).get().as<long long>(), 1234);
    ConnectionState other;
    CallContext otherContext{automation, server, other};
    PlanePayloads none;
    const msgpack::sbuffer params = Params(1);
    const msgpack::object_handle decoded = msgpack::unpack(params.data(), params.size());
    const CallResult result = Dispatch(otherContext, "GS_SetHwnd", decoded.get(), none);
    ASSERT_FALSE(result.error);
    EXPECT_EQ(msgpack::unpack(result.reply.head().data(), result.reply.head().size())
                  .get()
                  .as<long long>(),
              0)
        << "another plug-in's window is its own";
    EXPECT_EQ(connection.graphicsWindow, 5678);
}

TEST_F(DesktopMethods, CurvePointsAreTheLastStrokesPenPath) {
    EXPECT_TRUE(Integers(answer("GS_GetCurvepoints").get()).empty());
    ASSERT_EQ(errorOf("Wib_BrushDown", Params(2.4, 3.6)), 0);
    ASSERT_EQ(errorOf("Wib_BrushMove", Params(5.2, 3.6)), 0);
    ASSERT_EQ(errorOf("Wib_BrushMove", Params(7.0, 1.0)), 0);
    ASSERT_EQ(errorOf("Wib_BrushUp", Params(7.0, 1.0)), 0);
    EXPECT_EQ(Integers(answer("GS_GetCurvepoints").get()),
              (std::vector<long long>{2, 4, 5, 4, 7, 1}));
    ASSERT_EQ(errorOf("Wib_BrushDown", Params(1.0, 1.0)), 0);
    EXPECT_EQ(Integers(answer("GS_GetCurvepoints").get()), (std::vector<long long>{1, 1}))
        << "a new stroke starts a new curve";
}

TEST_F(DesktopMethods, TheTemporaryArrayIsHandedOnAndSwapped) {
    EXPECT_TRUE(
        Integers(answer("GS_SetTempArray", Params(std::vector<int>{1, -2, 3})).get()).empty());
    EXPECT_EQ(Integers(answer("GS_SetTempArray", Params(std::vector<int>{9})).get()),
              (std::vector<long long>{1, -2, 3}));
    EXPECT_EQ(server.tempArray, (IntegerList{9})) << "held for every plug-in";
    EXPECT_EQ(errorOf("GS_SetTempArray", Params(std::vector<double>{1.5})), 5);
    EXPECT_EQ(errorOf("GS_SetTempArray", Params(std::vector<long long>{1LL << 31})), 5);
    EXPECT_EQ(errorOf("GS_SetTempArray", Params(4)), 5);
    EXPECT_EQ(server.tempArray, (IntegerList{9})) << "a refused call changes nothing";
}

}  // namespace
}  // namespace wib::testing

// SPDX-License-Identifier: GPL-3.0-or-later
// The program's windows as a plug-in sees them: the image as a file for the
// desktop, the title bar's icon, and forms the program asks the user.

#include <cmath>
#include <filesystem>
#include <limits>

#include "core/workspace.h"
#include "fileio/bitmap_reader.h"
#include "plugins/method_families.h"
#include "plugins/rpc_error.h"

namespace wib {

namespace {

constexpr const char* kFamily = "Application and window";
constexpr const char* kWallpaperName = "wallpaper.bmp";
// The widest number a form's number field offers.
constexpr double kFormNumberLimit = 1e9;

// One field of a plug-in's form: its kind follows its starting value, which
// must lie in the field's range.
ParamSpec FormField(const std::string& name, const ParamValue& initial) {
    if (const auto* whole = std::get_if<long long>(&initial);
        whole != nullptr && (*whole < std::numeric_limits<std::int32_t>::min() ||
                             *whole > std::numeric_limits<std::int32_t>::max())) {
        throw BadCall("a form's whole numbers must lie in 32-bit range");
    }
    if (const auto* number = std::get_if<double>(&initial);
        number != nullptr && std::abs(*number) > kFormNumberLimit) {
        throw BadCall("a form's numbers must lie within -1e9 to 1e9");
    }
    ParamSpec field;
    field.name = name;
    field.caption = name;
    field.fallback = initial;
    if (std::holds_alternative<long long>(initial)) {
        field.type = ParamType::Integer;
        field.minimum = std::numeric_limits<std::int32_t>::min();
        field.maximum = std::numeric_limits<std::int32_t>::max();
    } else if (std::holds_alternative<double>(initial)) {
        field.type = ParamType::Number;
        field.minimum = -kFormNumberLimit;
        field.maximum = kFormNumberLimit;
    } else if (const auto* list = std::get_if<IntegerList>(&initial)) {
        field.type = ParamType::IntegerList;
        field.minimum = std::numeric_limits<std::int32_t>::min();
        field.maximum = std::numeric_limits<std::int32_t>::max();
        field.lengths = {list->size()};
    } else {
        field.type = ParamType::Text;
    }
    return field;
}

Reply FormAnswer(const std::map<std::string, ParamValue>& values) {
    msgpack::sbuffer packed;
    msgpack::packer<msgpack::sbuffer> packer(packed);
    packer.pack_map(static_cast<std::uint32_t>(values.size()));
    for (const auto& [name, value] : values) {
        packer.pack(name);
        std::visit([&packer](const auto& v) { packer.pack(v); }, value);
    }
    return Reply::Packed(std::move(packed));
}

}  // namespace

std::vector<MethodSpec> DesktopMethods() {
    return {
        {"Wib_WallpaperFilename",
         kFamily,
         {},
         {ResultType::Text, "text: the file's path, empty when it could not be written"},
         "Writes the image as a 24-bit bitmap, wallpaper.bmp in the program's temporary folder "
         "(replacing the one before), for the plug-in to hand to the desktop; answers its path. "
         "The document keeps its own name.",
         [](CallContext& c, CallArgs&) {
             const std::string path =
                 (std::filesystem::path(c.host.tempDir) / kWallpaperName).string();
             return Reply::Text(SaveBMP(c.workspace(), path) ? path : std::string());
         }},
        {"Wib_ChangeBarImage",
         kFamily,
         {{"path", ArgType::Text}},
         {ResultType::Flag, "flag: -1 when shown"},
         "Shows an image file (PNG, BMP, ...) as the icon in the main window's title bar; empty "
         "text gives the program's own icon back. 0 when the file holds no image or there is "
         "no window (headless mode).",
         [](CallContext& c, CallArgs& args) {
             return Reply::Integer(c.workspace().host.view.setTitleBarImage(args.text(0)) ? -1 : 0);
         }},
        {"Wib_SendFormObject",
         kFamily,
         {{"title", ArgType::Text}, {"fields", ArgType::Params}},
         {ResultType::Params, "map: the values, by field name; empty when cancelled"},
         "Asks the user for the fields of a form in one dialog titled `title`: each field is a "
         "name and its starting value, whose kind makes the field (whole number, number, text, "
         "integer array; a boolean is -1 / 0). Answers the values given, by name, or an empty "
         "map when the user cancels; in headless mode the starting values.",
         [](CallContext& c, CallArgs& args) {
             CommandSpec form;
             form.id = "plugin.form";
             form.caption = args.text(0);
             std::map<std::string, ParamValue> values = args.params(1);
             for (const auto& [name, initial] : values) {
                 form.params.push_back(FormField(name, initial));
             }
             if (!c.host.commands.ask(form, values)) {
                 values.clear();
             }
             return FormAnswer(values);
         }},
    };
}

}  // namespace wib

// SPDX-License-Identifier: GPL-3.0-or-later
// Where brush images are saved: the brush set folder and fresh names in it.

#include <filesystem>

#include "plugins/method_families.h"
#include "plugins/rpc_error.h"

namespace wib {

namespace {

// More than any folder of brushes holds; the search for a free name stops there.
constexpr int kMaxBrushNumber = 9999;

std::filesystem::path BrushFolder(const CallContext& c) {
    return c.server.brushSetFolder.empty() ? std::filesystem::path(c.host.tempDir)
                                           : std::filesystem::path(c.server.brushSetFolder);
}

std::string Numbered(int n) {
    std::string digits = std::to_string(n);
    return "brush" + std::string(4 - std::min<std::size_t>(4, digits.size()), '0') + digits +
           ".bmp";
}

}  // namespace

std::vector<MethodSpec> BrushFileMethods() {
    return {
        {"Wib_SetBrushSetFolder",
         "Brush settings",
         {{"folder", ArgType::Text}},
         {ResultType::Nothing, "nothing"},
         "Sets the folder of the brush set, where Wib_NewBrushFilename names brush images; it "
         "must exist. Until set it is the program's temporary folder.",
         [](CallContext& c, CallArgs& args) {
             std::error_code error;
             if (!std::filesystem::is_directory(args.text(0), error)) {
                 throw BadCall("no such folder: " + args.text(0));
             }
             c.server.brushSetFolder = args.text(0);
             return Reply::Nil();
         }},
        {"Wib_NewBrushFilename",
         "Brush image",
         {},
         {ResultType::Text, "text"},
         "A file name in the brush set's folder that no file has yet: brush0001.bmp, "
         "brush0002.bmp and so on (for Wib_SaveBrushToBMP).",
         [](CallContext& c, CallArgs&) {
             const std::filesystem::path folder = BrushFolder(c);
             for (int n = 1; n <= kMaxBrushNumber; ++n) {
                 const std::filesystem::path candidate = folder / Numbered(n);
                 std::error_code error;
                 if (!std::filesystem::exists(candidate, error)) {
                     return Reply::Text(candidate.string());
                 }
             }
             throw BadCall("the brush set folder holds no free brush name");
         }},
    };
}

}  // namespace wib

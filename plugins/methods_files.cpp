// SPDX-License-Identifier: GPL-3.0-or-later
// Image files: bitmaps, the converter, brush images, numbered names.

#include "fileio/bitmap_reader.h"
#include "fileio/file_names.h"
#include "fileio/image_files.h"
#include "fileio/targa_reader.h"
#include "paint/paint_session.h"
#include "plugins/method_families.h"
#include "plugins/rpc_error.h"

namespace wib {

namespace {

constexpr const char* kFamily = "Application and window";
constexpr MethodResult kDone{ResultType::Flag,
                             "flag: -1 when done, 0 when refused (the user was told why)"};

const std::vector<ArgSpec> kPath = {{"path", ArgType::Text}};

using FileOperation = bool (*)(Workspace&, const std::string&);

MethodSpec FileMethod(const char* name, const char* summary, FileOperation operation) {
    return {name, kFamily, kPath, kDone, summary, [operation](CallContext& c, CallArgs& args) {
                return Reply::Integer(operation(c.workspace(), args.text(0)) ? -1 : 0);
            }};
}

// A brush loaded from a file becomes the brush strokes paint with.
MethodSpec BrushLoad(const char* name, const char* summary, FileOperation operation) {
    return {name, kFamily, kPath, kDone, summary, [operation](CallContext& c, CallArgs& args) {
                if (!operation(c.workspace(), args.text(0))) {
                    return Reply::Integer(0);
                }
                c.host.paint.setImageBrushActive(true);
                c.host.paint.optionsChanged();
                return Reply::Integer(-1);
            }};
}

bool TargaToBrush(Workspace& workspace, const std::string& path) {
    return LoadTargaToBrush(workspace, path).has_value();
}

}  // namespace

std::vector<MethodSpec> FileMethods() {
    return {
        FileMethod("Wib_LoadBMP", "Opens an uncompressed 8, 24 or 32-bit bitmap as the image.",
                   LoadBMP),
        FileMethod("Wib_SaveBMP", "Saves the image as a 24-bit bitmap.", SaveBMP),
        {"Wib_Load_IM", kFamily, kPath, kDone,
         "Opens any image the converter reads (PNG, JPEG, ...) as the image.",
         [](CallContext& c, CallArgs& args) {
             return Reply::Integer(
                 c.host.files.openThroughConverter(c.workspace(), args.text(0)) ? -1 : 0);
         }},
        BrushLoad("Wib_LoadTargaToBrush",
                  "Loads a Targa file as the image brush and makes it current.", TargaToBrush),
        BrushLoad("Wib_LoadBMPtoBrush", "Loads a bitmap as the image brush and makes it current.",
                  LoadBMPToBrush),
        FileMethod("Wib_SaveBrushToBMP", "Saves the image brush as a 32-bit bitmap, alpha kept.",
                   SaveBrushToBMP),
        {"Wib_NewFilename",
         kFamily,
         {{"name", ArgType::Text}},
         {ResultType::Text, "text"},
         "The next name of a numbered series: name0009.tga gives name0010.tga; a name without a "
         "number gets 0001.",
         [](CallContext&, CallArgs& args) { return Reply::Text(NextNumberedName(args.text(0))); }},
    };
}

}  // namespace wib

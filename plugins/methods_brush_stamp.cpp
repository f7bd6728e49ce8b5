// SPDX-License-Identifier: GPL-3.0-or-later
// The brush image and the main buffer: taking one from the other.

#include "core/workspace.h"
#include "plugins/method_families.h"
#include "plugins/rpc_error.h"

namespace wib {

namespace {

constexpr const char* kFamily = "Brush image";
constexpr MethodResult kNothing{ResultType::Nothing, "nothing"};
const std::vector<ArgSpec> kCorner = {{"x", ArgType::Short}, {"y", ArgType::Short}};

const BrushImage& NonEmpty(const BrushImage& brush) {
    if (brush.empty()) {
        throw BadCall("there is no brush image");
    }
    return brush;
}

// One channel blended by the brush's alpha: 255 takes the brush, 0 keeps the image.
std::uint8_t Blend(std::uint8_t brush, std::uint8_t image, std::uint8_t alpha) {
    return static_cast<std::uint8_t>((brush * alpha + image * (255 - alpha) + 127) / 255);
}

}  // namespace

std::vector<MethodSpec> BrushStampMethods() {
    return {
        {"Wib_CopyBrush", kFamily, kCorner, kNothing,
         "Copies the main buffer's pixels under the brush image, its top left corner at image "
         "pixel (x, y), into the brush's colour planes; its alpha stays. The whole brush must "
         "lie inside the image (error 9 otherwise, changing nothing).",
         [](CallContext& c, CallArgs& args) {
             BrushImage& brush = c.workspace().brush;
             NonEmpty(brush);
             const Document& doc = c.document();
             const int left = static_cast<int>(args.integer(0));
             const int top = static_cast<int>(args.integer(1));
             const int width = static_cast<int>(brush.mask().stride());
             const int height = static_cast<int>(brush.mask().rows());
             if (left < 0 || top < 0 || left + width > doc.width || top + height > doc.height) {
                 throw SubscriptError();
             }
             for (int y = 0; y < height; ++y) {
                 for (int x = 0; x < width; ++x) {
                     brush.R.at(x, y) = doc.RBuffer.at(left + x, top + y);
                     brush.G.at(x, y) = doc.GBuffer.at(left + x, top + y);
                     brush.B.at(x, y) = doc.BBuffer.at(left + x, top + y);
                 }
             }
             return Reply::Nil();
         }},
        {"Wib_PasteBrush", kFamily, kCorner, kNothing,
         "Blends the brush image into the main buffer through its alpha, its top left corner at "
         "image pixel (x, y); what falls outside the image is left out. No redraw and no undo "
         "step: the plug-in saves undo and refreshes.",
         [](CallContext& c, CallArgs& args) {
             const BrushImage& brush = NonEmpty(c.workspace().brush);
             Document& doc = c.document();
             const int left = static_cast<int>(args.integer(0));
             const int top = static_cast<int>(args.integer(1));
             const int width = static_cast<int>(brush.mask().stride());
             const int height = static_cast<int>(brush.mask().rows());
             for (int y = std::max(0, -top); y < height && top + y < doc.height; ++y) {
                 for (int x = std::max(0, -left); x < width && left + x < doc.width; ++x) {
                     const std::uint8_t a = brush.A().at(x, y);
                     std::uint8_t& r = doc.RBuffer.at(left + x, top + y);
                     std::uint8_t& g = doc.GBuffer.at(left + x, top + y);
                     std::uint8_t& b = doc.BBuffer.at(left + x, top + y);
                     r = Blend(brush.R.at(x, y), r, a);
                     g = Blend(brush.G.at(x, y), g, a);
                     b = Blend(brush.B.at(x, y), b, a);
                 }
             }
             doc.modified = true;
             return Reply::Nil();
         }},
    };
}

}  // namespace wib

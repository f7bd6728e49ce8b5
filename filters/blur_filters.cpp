// SPDX-License-Identifier: GPL-3.0-or-later
#include "filters/blur_filters.h"

#include "core/commands.h"
#include "filters/filter_bands.h"
#include "filters/filter_preview.h"
#include "filters/window_filter.h"
#include "pixel/box_blur.h"
#include "pixel/gaussian.h"
#include "pixel/lens_blur.h"
#include "pixel/motion_blur.h"
#include "pixel/path_blur.h"
#include "pixel/surface_blur.h"

namespace wib {

namespace {

constexpr const char* kMenu = "Filter/Blur";

using PathRows = void (*)(const RgbPlanes&, const RgbTarget&, int first, int end, BlurCentre,
                          double);

// A blur along paths about a centre the panel places in percent of the image
// (0 the first pixel, 100 the last); `amount` names the path's length.
CommandSpec PathBlurRow(std::string id, std::string caption, ParamSpec amount, PathRows rows) {
    const std::string name = amount.name;
    return FilterRow(
        std::move(id), std::move(caption), kMenu,
        {std::move(amount), IntegerParam("x", "Centre x (%)", 0, 100, 50),
         IntegerParam("y", "Centre y (%)", 0, 100, 50)},
        [name, rows](const FilterContext& context) {
            const RgbPlanes source = SourceImage(context);
            const RgbTarget target = TargetImage(context);
            const BlurCentre centre{
                static_cast<double>(context.values.integer("x")) * (source.width - 1) / 100.0,
                static_cast<double>(context.values.integer("y")) * (source.height - 1) / 100.0};
            const double length = static_cast<double>(context.values.integer(name));
            ParallelRows(context.threads, source.height, [&](int first, int end) {
                rows(source, target, first, end, centre, length);
            });
        });
}

}  // namespace

void RegisterBlurFilters(CommandRegistry& registry) {
    // Both ways of the Gaussian read less than 5 sigma from the pixel.
    const PreviewReach kGaussianReach = NumberReach("sigma", 5, 2);
    registry.add(WithPreviewReach(
        WindowFilterRow("filter.blur.box", "&Box blur...", kMenu,
                        {IntegerParam("radius", "Radius", 1, 200, 2)},
                        [](const PlaneBand& band, const ParamValues& values) {
                            BoxBlur(band, static_cast<int>(values.integer("radius")));
                        }),
        IntegerReach("radius")));
    registry.add(
        WithPreviewReach(WindowFilterRow("filter.blur.gaussian", "&Gaussian blur...", kMenu,
                                         {NumberParam("sigma", "Standard deviation", 0.3, 200, 2)},
                                         [](const PlaneBand& band, const ParamValues& values) {
                                             GaussianBlur(band, values.number("sigma"));
                                         }),
                         kGaussianReach));
    registry.add(WithPreviewReach(
        WindowFilterRow("filter.blur.motion", "&Motion blur...", kMenu,
                        {NumberParam("angle", "Angle (degrees)", -360, 360, 0),
                         IntegerParam("distance", "Distance", 1, 200, 10)},
                        [](const PlaneBand& band, const ParamValues& values) {
                            MotionBlur(band, values.number("angle"),
                                       static_cast<int>(values.integer("distance")));
                        }),
        IntegerReach("distance", 1)));
    registry.add(PathBlurRow("filter.blur.radial", "&Radial (spin) blur...",
                             IntegerParam("angle", "Angle (degrees)", 1, 360, 10), SpinBlurRows));
    registry.add(PathBlurRow("filter.blur.zoom", "&Zoom blur...",
                             IntegerParam("amount", "Amount (%)", 1, 100, 20), ZoomBlurRows));
    registry.add(WithPreviewReach(
        WindowFilterRow("filter.blur.lens", "&Lens blur...", kMenu,
                        {IntegerParam("radius", "Radius", 1, 100, 5)},
                        [](const PlaneBand& band, const ParamValues& values) {
                            LensBlur(band, static_cast<int>(values.integer("radius")));
                        }),
        IntegerReach("radius")));
    registry.add(WithPreviewReach(
        WindowFilterRow("filter.blur.surface", "&Surface blur...", kMenu,
                        {IntegerParam("radius", "Radius", 1, 50, 5),
                         IntegerParam("threshold", "Threshold", 1, 255, 25)},
                        [](const PlaneBand& band, const ParamValues& values) {
                            SurfaceBlur(band, static_cast<int>(values.integer("radius")),
                                        static_cast<int>(values.integer("threshold")));
                        }),
        IntegerReach("radius")));
}

}  // namespace wib

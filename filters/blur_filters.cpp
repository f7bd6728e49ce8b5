// SPDX-License-Identifier: GPL-3.0-or-later
#include "filters/blur_filters.h"

#include "filters/filter_params.h"
#include "filters/filter_preview.h"
#include "filters/window_filter.h"
#include "pixel/box_blur.h"
#include "pixel/gaussian.h"
#include "pixel/motion_blur.h"

namespace wib {

void RegisterBlurFilters(CommandRegistry& registry) {
    constexpr const char* kMenu = "Filter/Blur";
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
}

}  // namespace wib

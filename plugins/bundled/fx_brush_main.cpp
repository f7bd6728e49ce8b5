// SPDX-License-Identifier: GPL-3.0-or-later
// Fx brush: paints a trail of sparkling stars in the primary colour along
// the user's drags on the canvas, the stars' size following the pen's
// pressure. It listens to the canvas until its turn ends.
#include <iostream>
#include <string>
#include <vector>

#include "fx_brush.h"
#include "wibbleton_client.h"

namespace {

class FxBrush {
  public:
    explicit FxBrush(wibbleton::Wibbleton_Class& wib) : wib_(wib) {}

    // One canvas event: [button, shift, x, y, pressure].
    void handle(const std::string& event, const std::vector<double>& values) {
        if (values.size() < 5) {
            return;
        }
        const int button = static_cast<int>(values[0]);
        const fxbrush::Point at{static_cast<int>(values[2]), static_cast<int>(values[3])};
        const double pressure = values[4];
        if (event == "WibMouseDown" && button == 1) {
            // One undo step per stroke, the image as it was before it.
            wib_.Wib_SaveUndo();
            colour_ = fxbrush::Unpack(wib_.Wib_GetPrimaryColor());
            width_ = wib_.Wib_BufferWidth();
            height_ = wib_.Wib_BufferHeight();
            drawing_ = true;
            last_ = at;
            star(at, pressure);
            wib_.Wib_Refresh();
        } else if (event == "WibMouseMove" && drawing_) {
            const int spacing = 2 * fxbrush::StarRadius(pressure);
            const std::vector<fxbrush::Point> centres = fxbrush::TrailCentres(last_, at, spacing);
            for (const fxbrush::Point& centre : centres) {
                star(centre, pressure);
                last_ = centre;
            }
            if (!centres.empty()) {
                wib_.Wib_Refresh();
            }
        } else if (event == "WibMouseUp") {
            drawing_ = false;
        }
    }

  private:
    void star(fxbrush::Point centre, double pressure) {
        for (const fxbrush::Spot& spot : fxbrush::StarDab(centre, pressure, width_, height_)) {
            const fxbrush::Rgb under = fxbrush::Unpack(wib_.Wib_GetRGB(spot.x, spot.y));
            const fxbrush::Rgb mixed = fxbrush::Blend(under, colour_, spot.cover);
            if (!(mixed == under)) {
                wib_.Wib_SetRGB(spot.x, spot.y, mixed.r, mixed.g, mixed.b);
            }
        }
    }

    wibbleton::Wibbleton_Class& wib_;
    fxbrush::Rgb colour_;
    int width_ = 0;
    int height_ = 0;
    bool drawing_ = false;
    fxbrush::Point last_;
};

}  // namespace

int main() {
    try {
        wibbleton::Wibbleton_Class wib;
        FxBrush brush(wib);
        wib.Wib_ListenEvents(true);
        for (;;) {
            const wibbleton::Event event = wib.waitEvent();
            if (event.method == "WibEnd") {
                return 0;
            }
            brush.handle(event.method, event.params.get().as<std::vector<double>>());
        }
    } catch (const std::exception& error) {
        std::cerr << "Fx_brush: " << error.what() << '\n';
        return 1;
    }
}

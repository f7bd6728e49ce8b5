// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/plane.h"

namespace wib {

// The image brush: colour planes, their coverage (alpha) and the mask the dab
// compositor reads, 255 - alpha (0 = full strength, 255 = outside). Alpha is
// only set through this class, so the mask always follows it.
class BrushImage {
  public:
    Plane R, G, B;

    const Plane& A() const { return alpha_; }
    const Plane& mask() const { return mask_; }
    bool empty() const { return mask_.empty(); }

    // Whether painting uses this image (on only while there is one).
    bool active() const { return active_; }
    void setActive(bool on) { active_ = on && !empty(); }

    // One alpha value; throws SubscriptError outside the plane.
    void setAlpha(int x, int y, std::uint8_t value);
    // A whole alpha plane, whatever its shape; the mask is made from it.
    void setAlpha(Plane&& alpha);
    // All four planes at once.
    void assign(Plane&& r, Plane&& g, Plane&& b, Plane&& a);
    // A brush of width x height, black and fully transparent, so that it
    // paints nothing until its planes are set. Throws std::bad_alloc and then
    // leaves the brush as it was.
    void makeBlank(int width, int height);

  private:
    Plane alpha_;
    Plane mask_;
    bool active_ = false;
};

}  // namespace wib

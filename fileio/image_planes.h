// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>

#include "core/document.h"

namespace wib {

// The four planes a file's pixels go to or come from: the main and alpha
// buffers, or the brush buffer.
struct ImagePlanes {
    Plane& r;
    Plane& g;
    Plane& b;
    Plane& a;
};

inline ImagePlanes DocumentPlanes(Document& doc) {
    return {doc.RBuffer, doc.GBuffer, doc.BBuffer, doc.ABuffer};
}

// Told the percentage done, 0..100, each time it changes.
using ProgressReport = std::function<void(int percent)>;

}  // namespace wib

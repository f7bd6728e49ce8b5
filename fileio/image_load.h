// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <optional>
#include <string>

#include "fileio/image_planes.h"

namespace wib {

class Workspace;

// Where an image read from a file goes.
enum class LoadTarget {
    Document,          // the document takes the file's size
    DocumentKeepSize,  // the file must have the document's size
    Brush,             // the brush buffer takes the file's size
};

// An image on its way from a file: the planes a decoder writes into. A
// document is written in place; a brush is made aside and takes the place of
// the old one only when the load finishes.
class ImageLoad {
  public:
    ImageLoad(Workspace& workspace, LoadTarget target, int width, int height);
    ImagePlanes planes();

  private:
    friend void FinishImageLoad(ImageLoad& load, bool fileHadAlpha, const std::string& path);
    Workspace& workspace_;
    LoadTarget target_;
    int width_;
    int height_;
    std::array<Plane, 4> brush_;  // R, G, B, A of a brush being loaded
};

// Readies the destination for an image of width x height once the file's
// header has been accepted: checks the size against the program's limits,
// saves an undo step or rebuilds the document at the new size, or makes brush
// planes of that size. Nothing when it cannot (the user has been told why).
std::optional<ImageLoad> BeginImageLoad(Workspace& workspace, LoadTarget target, int width,
                                        int height);

// Ends a load: a file without alpha gets alpha 255 everywhere, and so does one
// whose alpha is 0 everywhere, so that no image comes in fully masked. A
// document then takes `path` as its file name and counts as unchanged (with
// no path, from a damaged file or the clipboard, it counts as changed), saves
// an undo step and is redrawn; a brush becomes the custom
// brush with its mask made from its alpha.
void FinishImageLoad(ImageLoad& load, bool fileHadAlpha, const std::string& path);

// The alpha rules above, on the top-left width x height of `alpha`.
void ApplyLoadedAlpha(Plane& alpha, int width, int height, bool fileHadAlpha);

}  // namespace wib

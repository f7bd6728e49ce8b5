// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace wib {

// How strokes use the selection plane (the exclusive buttons kq_button1 and
// kq_button2 of the brush panel; neither down is the default).
enum class AlphaUse : std::int32_t {
    RespectSelection = 0,  // paint lands inside the selection, weighted by it
    PaintOnAlpha = 1,      // kq_button1: the dab also raises the matte
    IgnoreSelection = 2,   // kq_button2: paint lands everywhere
};

// The brush options model: every value the brush panel (`BrushOptions`) and
// the paper panel (`Paper_Panel`) hold. The panels edit it; the stroke engine
// reads it at the start of every segment. Sliders hold integers, toggles bools.
struct BrushOptionsModel {
    int transformQuality = 1;        // Option1..3: 0 nearest, 1 bilinear, 2 supersampled
    bool pressureToSize = true;      // Check5
    bool pressureToOpacity = false;  // Check7
    int speedToSize = 0;             // Hscroll9, -25..25; 0 off
    int brushSize = 16;              // HScroll1: built-in brush diameter, and repaint margin
    int sizeJitter = 0;              // hscroll4, 0..35
    int angleJitter = 0;             // hscroll3, degrees 0..180
    bool followStroke = false;       // Check1
    int hueJitter = 0;               // hscroll2, 0..360
    int saturationJitter = 0;        // HScroll6, 0..100
    int valueJitter = 0;             // Hscroll7, 0..100
    int colourPickUp = 0;            // hscroll5, 0..255
    int dryOut = 0;                  // Hscroll8, 0..384
    AlphaUse alphaUse = AlphaUse::RespectSelection;  // kq_button1 / kq_button2
    bool imageBrushTransform = false;                // Check3
    int opacity = 255;                               // HProp1, 0..255
    int spacing = 25;                                // HProp2, 0..500 (percent, or pixels)
    int baseAngle = 0;                               // HProp3, degrees 0..359
    int imageBrushScale = 100;                       // HProp4, percent 1..400
    bool relativeSpacing = true;                     // Check2
    bool livePreview = true;        // Check4: redraw the brush preview on each change
    bool paperTexture = false;      // kq_button6
    int fade = 0;                   // HProp8, 0..255: opacity taken off toward the dab's foot
    bool mirrorLeftRight = false;   // kq_button7
    bool mirrorTopBottom = false;   // kq_button8
    bool radialSymmetry = false;    // kq_button9
    int radialCopies = 4;           // HProp5, 2..10
    int symmetryCentreX = 50;       // HProp6, percent of the width
    int symmetryCentreY = 50;       // HProp7, percent of the height
    bool cloneAligned = true;       // kq_button10: the clone offset stays put between strokes
    std::int32_t builtinBrush = 0;  // which built-in brush (kept outside the panel)
    int paintMode = 0;              // KQ_Dropslider3, 0..11
    int hardness = 80;              // KQ_DropSlider1, 0..100: edge of the round brushes
    int bristles = 24;              // kq_dropslider2, 3..64: hairs of the bristle brush
    std::int32_t brushScaleThousandths = 1000;  // brush scale x 1000 (kept outside the panel)
    bool eraseToSecondary = true;     // kq_button18: erase mode paints the secondary colour
    bool pickUpIgnoresAlpha = false;  // kq_button17: colour pick-up samples outside the selection
    int paperStrength = 100;          // Paper_Panel HScroll6, 0..100: depth of the grain
    bool paperInvert = false;         // Paper_Panel Check1: grain reversed
    bool paperShiftPerDab = false;    // Paper_Panel Check2: grain moved at each dab
    bool paperEmboss = false;         // Paper_Panel Check3: grain lit from the top left
    int paperScale = 100;             // Paper_Panel HProp1, percent 25..400
};

// Which stroke procedure the brush-type buttons select (kq_button5, kq_button3,
// kq_button4); not part of the settings record.
enum class BrushType : int { Smooth = 0, Dab = 1, ImageDab = 2 };

}  // namespace wib

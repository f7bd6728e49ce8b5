// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QRect>
#include <QTimer>
#include <cstdint>
#include <vector>

#include "pixel/matte_outline.h"

class QPainter;

namespace wib {

struct Document;
class Form1;

// The selection's outline on the canvas: dashes that crawl along the edges
// where the matte crosses 128 while a selection is in force. The outline is
// found again only when the matte has changed since it was last found; each
// step of the animation just redraws the part of it in view.
class MarchingAnts : public QObject {
    Q_OBJECT
  public:
    MarchingAnts(const Document& document, Form1* canvas);

    // Compares the matte with the one the outline was found for and finds it
    // again if they differ; starts or stops the animation to match.
    void follow();
    // The dashes on the edges that cross `source` (image pixels).
    void draw(QPainter& painter, const QRect& source, double scale) const;
    // The dashes start again from their first position.
    void restart();

    const std::vector<OutlineEdge>& outline() const { return outline_; }
    int phase() const { return phase_; }

  private:
    bool matteChanged() const;
    void step();

    const Document& document_;
    Form1* canvas_;
    QTimer timer_;
    std::vector<OutlineEdge> outline_;
    QRect bounds_;  // of the outline, in image pixels
    // The matte the outline belongs to, row after row, and its flag.
    std::vector<std::uint8_t> matte_;
    bool inForce_ = false;
    int width_ = 0, height_ = 0;
    int phase_ = 0;
};

}  // namespace wib

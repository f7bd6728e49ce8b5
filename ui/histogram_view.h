// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

#include "pixel/colour_adjust.h"

namespace wib {

struct Document;

// The counts of the image's values, its three colour planes together.
Histogram ImageHistogram(const Document& document);

// The Levels panel's histogram: one bar per value 0..255, with the black and
// white points and the midpoint the gamma makes of them drawn over it.
class HistogramView : public QWidget {
    Q_OBJECT
  public:
    explicit HistogramView(const Histogram& counts, QWidget* parent = nullptr);
    void setLevels(int black, int white, double gamma);
    QSize sizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    Histogram counts_;
    int black_ = 0;
    int white_ = 255;
    double gamma_ = 1.0;
};

}  // namespace wib

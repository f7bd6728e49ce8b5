// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/histogram_view.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

#include "core/document.h"

namespace wib {

namespace {

constexpr double kMarkers = 12;  // the strip under the bars that holds the pointers
constexpr double kSide = 5;      // room for half a pointer at either end

}  // namespace

Histogram ImageHistogram(const Document& document) {
    Histogram counts{};
    for (const Plane* plane : {&document.RBuffer, &document.GBuffer, &document.BBuffer}) {
        for (int y = 0; y < document.height; ++y) {
            AddToHistogram(plane->row(y), document.width, counts);
        }
    }
    return counts;
}

HistogramView::HistogramView(const Histogram& counts, QWidget* parent)
    : QWidget(parent), counts_(counts) {
    setObjectName("Histogram");
    setMinimumSize(256, 100);
}

QSize HistogramView::sizeHint() const {
    return {320, 140};
}

void HistogramView::setLevels(int black, int white, double gamma) {
    black_ = black;
    white_ = white;
    gamma_ = gamma;
    update();
}

void HistogramView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), palette().base());
    // Scaled to the second tallest bar: one value that fills most of the
    // image (a plain background) would otherwise flatten all the others.
    Histogram sorted = counts_;
    std::nth_element(sorted.begin(), sorted.begin() + 1, sorted.end(), std::greater<>());
    const double top = static_cast<double>(std::max<std::uint64_t>(sorted[1], 1));
    const double w = (width() - 2 * kSide) / 256.0;
    const double bars = height() - kMarkers;
    painter.setPen(Qt::NoPen);
    painter.setBrush(palette().text());
    for (int v = 0; v < 256; ++v) {
        const double bar = std::min(1.0, counts_[static_cast<std::size_t>(v)] / top) * (bars - 4);
        painter.drawRect(QRectF(kSide + v * w, bars - bar, w, bar));
    }
    // Below the bars, a pointer at each level, filled as the value it sets.
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(palette().text().color(), 1));
    const auto mark = [&](double value, const QColor& fill) {
        const double x = kSide + (value + 0.5) * w;
        const QPointF tip[3] = {
            {x, bars + 1}, {x - 5, bars + kMarkers - 1}, {x + 5, bars + kMarkers - 1}};
        painter.setBrush(fill);
        painter.drawPolygon(tip, 3);
    };
    // The value that the gamma maps to mid-grey.
    const double mid = black_ + (white_ - black_) * std::pow(0.5, gamma_);
    mark(black_, Qt::black);
    mark(mid, Qt::gray);
    mark(white_, Qt::white);
}

}  // namespace wib

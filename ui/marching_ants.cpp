// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/marching_ants.h"

#include <QPainter>
#include <algorithm>
#include <cstring>

#include "core/document.h"
#include "ui/form1.h"

namespace wib {

namespace {

constexpr int kStepMs = 120;
constexpr int kDash = 4;  // screen pixels of each dash and of each gap
constexpr std::uint8_t kInForce = 255;

}  // namespace

MarchingAnts::MarchingAnts(const Document& document, Form1* canvas)
    : QObject(canvas), document_(document), canvas_(canvas) {
    timer_.setInterval(kStepMs);
    connect(&timer_, &QTimer::timeout, this, [this] { step(); });
}

bool MarchingAnts::matteChanged() const {
    const bool inForce = document_.AlphaBitsFlag == kInForce;
    if (inForce != inForce_ || document_.width != width_ || document_.height != height_) {
        return true;
    }
    if (!inForce) {
        return false;
    }
    const auto width = static_cast<std::size_t>(width_);
    for (int y = 0; y < height_; ++y) {
        if (std::memcmp(document_.ABuffer.row(y), matte_.data() + y * width, width) != 0) {
            return true;
        }
    }
    return false;
}

void MarchingAnts::follow() {
    if (!matteChanged()) {
        return;
    }
    inForce_ = document_.AlphaBitsFlag == kInForce;
    width_ = document_.width;
    height_ = document_.height;
    outline_.clear();
    matte_.clear();
    bounds_ = QRect();
    if (inForce_ && !document_.ABuffer.empty()) {
        const auto width = static_cast<std::size_t>(width_);
        matte_.resize(width * static_cast<std::size_t>(height_));
        for (int y = 0; y < height_; ++y) {
            std::memcpy(matte_.data() + y * width, document_.ABuffer.row(y), width);
        }
        outline_ = MatteOutline({matte_.data(), width, width_, height_});
        for (const OutlineEdge& edge : outline_) {
            bounds_ |= QRect(QPoint(edge.x0, edge.y0), QPoint(edge.x1, edge.y1));
        }
    }
    if (outline_.empty()) {
        timer_.stop();
    } else if (!timer_.isActive()) {
        timer_.start();
    }
}

void MarchingAnts::restart() {
    phase_ = 0;
    follow();
    if (!outline_.empty()) {
        timer_.start();
        step();
    }
}

void MarchingAnts::step() {
    phase_ = (phase_ + 1) % (2 * kDash);
    if (!canvas_->isVisible()) {
        return;
    }
    const QRect shown = canvas_->visibleRegion().boundingRect();
    const QRect onScreen = canvas_
                               ->windowArea(QRectF(bounds_.left(), bounds_.top(),
                                                   bounds_.width() + 1, bounds_.height() + 1))
                               .adjusted(-1, -1, 1, 1);
    canvas_->update(onScreen & shown);
}

void MarchingAnts::draw(QPainter& painter, const QRect& source, double scale) const {
    if (outline_.empty()) {
        return;
    }
    QPen light(Qt::white, 1);
    QPen dark(Qt::black, 1);
    dark.setDashPattern({double(kDash), double(kDash)});
    dark.setDashOffset(-phase_);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing, false);
    for (const OutlineEdge& edge : outline_) {
        if (std::max(edge.x0, edge.x1) < source.left() ||
            std::min(edge.x0, edge.x1) > source.right() + 1 ||
            std::max(edge.y0, edge.y1) < source.top() ||
            std::min(edge.y0, edge.y1) > source.bottom() + 1) {
            continue;
        }
        // Dashes are measured from the image's corner so that they run on
        // across the damaged areas' seams.
        const QLineF line(edge.x0 * scale, edge.y0 * scale, edge.x1 * scale, edge.y1 * scale);
        painter.setPen(light);
        painter.drawLine(line);
        dark.setDashOffset(-phase_ + (edge.x0 + edge.y0) * scale);
        painter.setPen(dark);
        painter.drawLine(line);
    }
    painter.restore();
}

}  // namespace wib

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QPainter>
#include <QWidget>

#include "core/view_state.h"
#include "paint/tool.h"

namespace wib {

struct PenReading;

struct Document;
class PaintSession;
struct TabletCalibration;

// The canvas window: draws the main buffer at the document's zoom
// (100 = one image pixel per screen pixel). Only the damaged part of the
// window is converted and drawn.
class Form1 : public QWidget {
    Q_OBJECT
  public:
    Form1(const Document& document, const ViewState& view, QWidget* parent = nullptr);

    // Follows a change of document size or zoom.
    void updateGeometryFromDocument();
    // Redraws the image pixels left..right, top..bottom (inclusive).
    void refreshArea(int left, int top, int right, int bottom);
    QSize sizeHint() const override;

    // Pointer and pen input goes to the session's tools: the active one, or
    // for one press the one its modifier keys choose (Alt picks a colour,
    // Ctrl sets the clone source). Pressure is read through the calibration.
    void setPainter(PaintSession* session, const TabletCalibration* calibration);
    // The pointer shape of the active tool.
    void showToolCursor();

  protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void tabletEvent(QTabletEvent* event) override;

  private:
    double scale() const;
    void press(Qt::MouseButton button, Qt::KeyboardModifiers modifiers, QPointF at, double pressure,
               bool tablet);
    void drag(QPointF at, double pressure, bool tablet);
    void release(QPointF at);
    void recordPen(const PenReading& pen);
    void drawGrid(QPainter& painter, const QRect& source) const;

    const Document& document_;
    const ViewState& view_;
    PaintSession* painter_ = nullptr;
    const TabletCalibration* calibration_ = nullptr;
    Tool* pressed_ = nullptr;  // the tool of the press in progress
    QImage picture_;           // the converted damaged area, kept between redraws
};

}  // namespace wib

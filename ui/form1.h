// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QPainter>
#include <QWidget>

#include "core/layered_picture.h"
#include "core/observer_list.h"
#include "core/view_state.h"
#include "paint/tool.h"

namespace wib {

class CanvasEvents;
struct PenReading;

struct Document;
class PaintSession;
class Workspace;
struct TabletCalibration;

// The canvas window: draws the picture at the document's zoom (100 = one
// image pixel per screen pixel): the main buffer of a flat picture, else the
// composite of the visible layers over a checkerboard. Only the damaged part
// of the window is composited, converted and drawn.
class Form1 : public QWidget {
    Q_OBJECT
  public:
    explicit Form1(const Workspace& workspace, QWidget* parent = nullptr);

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
    // While a plug-in listens to `events`, pointer input goes to it, in image
    // pixels, instead of to the tools. Null: the tools always get it.
    void setCanvasEvents(CanvasEvents* events);

    // The image pixels the window shows now (scrolled and zoomed).
    QRect shownImageArea() const;
    // Draws `preview` over the image pixels `area` until cleared; the
    // document's planes are not touched.
    void setPreview(const QImage& preview, const QRect& area);
    void clearPreview();
    // The preview drawn now; a null image when there is none.
    const QImage& preview() const { return preview_; }
    const QRect& previewArea() const { return previewArea_; }

  Q_SIGNALS:
    // The window shows another part of the image (scrolled, zoomed, resized).
    void shownAreaChanged();

  protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void tabletEvent(QTabletEvent* event) override;
    // Enter and Escape go to the active tool (apply or cancel what it shows).
    void keyPressEvent(QKeyEvent* event) override;
    bool event(QEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    double scale() const;
    void press(Qt::MouseButton button, Qt::KeyboardModifiers modifiers, QPointF at, double pressure,
               bool tablet);
    void drag(QPointF at, double pressure, bool tablet);
    void release(QPointF at);
    // Sends the event to a listening plug-in; false when none listens.
    bool forward(int kind, int button, Qt::KeyboardModifiers modifiers, QPointF at,
                 double pressure);
    void listenersChanged();
    void recordPen(const PenReading& pen);
    void drawGrid(QPainter& painter, const QRect& source) const;
    // The layers' composite of `source` into picture_, over the checkerboard.
    void drawLayers(QPainter& painter, const QRect& source, const QRectF& target);

    const Workspace& workspace_;
    const Document& document_;
    const ViewState& view_;
    PaintSession* painter_ = nullptr;
    const TabletCalibration* calibration_ = nullptr;
    Tool* pressed_ = nullptr;  // the tool of the press in progress
    QImage picture_;           // the converted damaged area, kept between redraws
    LayerPixels composite_;    // the layers' composite at the document's size
    CanvasEvents* events_ = nullptr;
    Subscription eventsSubscription_;
    QImage preview_;
    QRect previewArea_;  // in image pixels
};

}  // namespace wib

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QPainter>
#include <QTransform>
#include <QWidget>

#include "core/layered_picture.h"
#include "core/observer_list.h"
#include "core/view_state.h"
#include "paint/tool.h"
#include "ui/marching_ants.h"
#include "ui/onion_view.h"

namespace wib {

class CanvasEvents;
class FrameStore;
struct PenReading;

struct Document;
class PaintSession;
class Workspace;
struct TabletCalibration;

// The canvas window: draws the picture at the document's zoom (100 = one
// image pixel per screen pixel), turned and mirrored as the view state says:
// the main buffer of a flat picture, else the composite of the visible layers
// over a checkerboard. Only the damaged part of the window is composited,
// converted and drawn.
class Form1 : public QWidget {
    Q_OBJECT
  public:
    explicit Form1(const Workspace& workspace, QWidget* parent = nullptr);

    // Follows a change of document size, zoom, rotation or mirror: takes the
    // view state's mapping and the window size it gives.
    void updateGeometryFromDocument();
    // The mapping from image pixels to window units the window is laid out
    // with; every point drawn or taken goes through it.
    const QTransform& imageToWindow() const { return toWindow_; }
    // The image point under a window position.
    QPointF imagePoint(QPointF window) const;
    // The window units that show the image pixels `image`.
    QRect windowArea(const QRectF& image) const;
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

    // The animation whose other frames the onion skin and light table show.
    void setFrames(const FrameStore* frames) { onion_.attach(frames); }
    // The selection's marching ants start again from their first position.
    void restartMarquee();
    const MarchingAnts& marchingAnts() const { return *ants_; }

  Q_SIGNALS:
    // The window shows another part of the image (scrolled, zoomed, resized).
    void shownAreaChanged();
    // Space + drag, or the hand tool, asks the view to scroll by this much.
    void panBy(QPoint delta);

  protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void tabletEvent(QTabletEvent* event) override;
    // Enter and Esc go to the active tool while it has something pending,
    // ahead of any menu shortcut on the same key.
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    double scale() const;
    // A window position in the units tools take: the image point times the zoom.
    QPointF toolPoint(QPointF window) const;
    void press(Qt::MouseButton button, Qt::KeyboardModifiers modifiers, QPointF at, double pressure,
               bool tablet);
    // Moves and the release carry the keys held then (Shift constrains a shape).
    void drag(QPointF at, Qt::KeyboardModifiers modifiers, double pressure, bool tablet);
    void release(QPointF at, Qt::KeyboardModifiers modifiers);
    // Sends the event to a listening plug-in; false when none listens.
    bool forward(int kind, int button, Qt::KeyboardModifiers modifiers, QPointF at,
                 double pressure);
    void listenersChanged();
    void recordPen(const PenReading& pen);
    void drawGrid(QPainter& painter, const QRect& source) const;
    // Redraws where the active tool's outline was and is now.
    void refreshOverlay();
    // Starts, continues or ends a pan; false when the press does not pan.
    bool startPan(QPointF at);
    // The layers' composite of `source` into picture_, over the checkerboard.
    void drawLayers(QPainter& painter, const QRect& source, const QRectF& target);

    const Workspace& workspace_;
    const Document& document_;
    const ViewState& view_;
    PaintSession* painter_ = nullptr;
    const TabletCalibration* calibration_ = nullptr;
    QTransform toWindow_;       // image pixels -> window units
    QTransform toolToWindow_;   // tool units (image pixels times the zoom) -> window
    QTransform windowToImage_;  // the inverses, kept beside them
    QTransform windowToTool_;
    Tool* pressed_ = nullptr;  // the tool of the press in progress
    QImage picture_;           // the converted damaged area, kept between redraws
    LayerPixels composite_;    // the layers' composite at the document's size
    CanvasEvents* events_ = nullptr;
    Subscription eventsSubscription_;
    QImage preview_;
    QRect previewArea_;  // in image pixels
    OnionView onion_;
    MarchingAnts* ants_;
    QRect overlayArea_;  // window units, where the tool's outline was drawn
    bool spaceHeld_ = false;
    bool panning_ = false;
    QPointF panFrom_;  // global position of the pan's last step
};

}  // namespace wib

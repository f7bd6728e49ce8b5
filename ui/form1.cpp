// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/form1.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QTabletEvent>
#include <algorithm>
#include <cmath>

#include "core/document.h"
#include "core/layer_composite.h"
#include "core/layer_edit.h"
#include "core/tablet_calibration.h"
#include "core/view_state.h"
#include "core/workspace.h"
#include "paint/paint_session.h"
#include "paint/pen_reading.h"
#include "plugins/canvas_events.h"
#include "ui/matte_overlay.h"
#include "ui/plane_image.h"
#include "ui/tool_cursors.h"

namespace wib {

Form1::Form1(const Workspace& workspace, QWidget* parent)
    : QWidget(parent),
      workspace_(workspace),
      document_(workspace.document),
      view_(workspace.view),
      onion_(workspace) {
    setObjectName("Form1");
    setAttribute(Qt::WA_OpaquePaintEvent);
    // A click on the image takes the keyboard from any text field, so that
    // single-key shortcuts (frame steps, brush keys) work again while painting.
    setFocusPolicy(Qt::ClickFocus);
    ants_ = new MarchingAnts(document_, this);
    updateGeometryFromDocument();
}

double Form1::scale() const {
    return view_.zoom / 100.0;
}

QSize Form1::sizeHint() const {
    const auto [width, height] = view_.windowSize(document_.width, document_.height);
    return QSize(width, height);
}

void Form1::updateGeometryFromDocument() {
    const ViewTransform t = view_.imageToWindow(document_.width, document_.height);
    toWindow_ = QTransform(t.m11, t.m12, t.m21, t.m22, t.dx, t.dy);
    const double s = scale();
    toolToWindow_ = QTransform::fromScale(1.0 / s, 1.0 / s) * toWindow_;
    windowToImage_ = toWindow_.inverted();
    windowToTool_ = toolToWindow_.inverted();
    setFixedSize(sizeHint());
    // The brush outline follows the zoom.
    showToolCursor();
    update();
}

QPointF Form1::imagePoint(QPointF window) const {
    return windowToImage_.map(window);
}

QPointF Form1::toolPoint(QPointF window) const {
    return windowToTool_.map(window);
}

QRect Form1::windowArea(const QRectF& image) const {
    return toWindow_.mapRect(image).toAlignedRect().adjusted(-1, -1, 1, 1);
}

void Form1::refreshArea(int left, int top, int right, int bottom) {
    update(windowArea(QRectF(left, top, right - left + 1, bottom - top + 1)));
}

QRect Form1::shownImageArea() const {
    return windowToImage_.mapRect(QRectF(visibleRegion().boundingRect()))
        .toAlignedRect()
        .intersected(QRect(0, 0, document_.width, document_.height));
}

void Form1::setPreview(const QImage& preview, const QRect& area) {
    const QRect old = previewArea_;
    preview_ = preview;
    previewArea_ = area;
    refreshArea(old.left(), old.top(), old.right(), old.bottom());
    refreshArea(area.left(), area.top(), area.right(), area.bottom());
}

void Form1::clearPreview() {
    if (preview_.isNull()) {
        return;
    }
    preview_ = QImage();
    refreshArea(previewArea_.left(), previewArea_.top(), previewArea_.right(),
                previewArea_.bottom());
    previewArea_ = QRect();
}

void Form1::moveEvent(QMoveEvent* event) {
    QWidget::moveEvent(event);
    Q_EMIT shownAreaChanged();
}

void Form1::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    Q_EMIT shownAreaChanged();
}

void Form1::setPainter(PaintSession* session, const TabletCalibration* calibration) {
    painter_ = session;
    calibration_ = calibration;
    pressed_ = nullptr;
    // Moves without a button follow a polygon's next side.
    setMouseTracking(session != nullptr);
    showToolCursor();
}

void Form1::setCanvasEvents(CanvasEvents* events) {
    events_ = events;
    eventsSubscription_ = events_ != nullptr
                              ? events_->changed.subscribe([this] { listenersChanged(); })
                              : Subscription();
    listenersChanged();
}

void Form1::listenersChanged() {
    const bool listening = events_ != nullptr && events_->listening();
    // A listening plug-in hears every move, pressed or not.
    setMouseTracking(listening || painter_ != nullptr);
    if (listening) {
        setCursor(Qt::CrossCursor);
    } else {
        showToolCursor();
    }
}

namespace {

enum PointerKind { kDown, kMove, kUp };

int ButtonNumber(Qt::MouseButton button) {
    return button == Qt::RightButton ? 2 : button == Qt::LeftButton ? 1 : 0;
}

// The button held during a move: left before right, 0 for none.
int HeldButton(Qt::MouseButtons buttons) {
    return (buttons & Qt::LeftButton) ? 1 : (buttons & Qt::RightButton) ? 2 : 0;
}

}  // namespace

bool Form1::forward(int kind, int button, Qt::KeyboardModifiers modifiers, QPointF at,
                    double pressure) {
    // A stroke already begun ends with its tool; the next press goes to the plug-in.
    if (events_ == nullptr || !events_->listening() || pressed_ != nullptr) {
        return false;
    }
    const QPointF image = imagePoint(at);
    const CanvasPointer pointer{
        button,
        ((modifiers & Qt::ShiftModifier) ? 1 : 0) | ((modifiers & Qt::ControlModifier) ? 2 : 0) |
            ((modifiers & Qt::AltModifier) ? 4 : 0),
        static_cast<int>(std::floor(image.x())), static_cast<int>(std::floor(image.y())), pressure};
    switch (kind) {
        case kDown:
            events_->mouseDown(pointer);
            break;
        case kMove:
            events_->mouseMove(pointer);
            break;
        default:
            events_->mouseUp(pointer);
    }
    return true;
}

void Form1::showToolCursor() {
    if (events_ != nullptr && events_->listening()) {
        return;
    }
    if (painter_ == nullptr) {
        setCursor(Qt::ArrowCursor);
        return;
    }
    const double diameter = painter_->state().options.brushSize * scale();
    setCursor(ToolPointer(painter_->tools().active().cursor(), diameter));
}

void Form1::restartMarquee() {
    ants_->restart();
}

void Form1::refreshOverlay() {
    const QRect now =
        painter_ != nullptr
            ? toolToWindow_
                  .mapRect(QRectF(ToolOverlayArea(painter_->tools().active().overlay(), scale())))
                  .toAlignedRect()
            : QRect();
    update(overlayArea_ | now);
    overlayArea_ = now;
}

bool Form1::startPan(QPointF at) {
    const bool hand =
        painter_ != nullptr && painter_->tools().active().cursor() == ToolCursor::Hand;
    if (pressed_ != nullptr || !(spaceHeld_ || hand)) {
        return false;
    }
    panning_ = true;
    panFrom_ = at;
    setCursor(Qt::ClosedHandCursor);
    return true;
}

namespace {

bool IsToolKey(const QKeyEvent& key) {
    return key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter || key.key() == Qt::Key_Escape;
}

}  // namespace

bool Form1::event(QEvent* event) {
    // Escape also stops playback from the menu; while a tool has something to
    // apply or cancel, the key is the tool's.
    if (event->type() == QEvent::ShortcutOverride && painter_ != nullptr &&
        IsToolKey(*static_cast<QKeyEvent*>(event)) && painter_->tools().active().pending()) {
        event->accept();
        return true;
    }
    return QWidget::event(event);
}

void Form1::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Space) {
        if (!event->isAutoRepeat()) {
            spaceHeld_ = true;
            setCursor(Qt::OpenHandCursor);
        }
        return;
    }
    if (painter_ != nullptr && pressed_ == nullptr && IsToolKey(*event)) {
        Tool& tool = painter_->tools().active();
        if (tool.pending()) {
            event->key() == Qt::Key_Escape ? tool.cancel() : tool.finish();
            refreshOverlay();
            return;
        }
    }
    QWidget::keyPressEvent(event);
}

void Form1::keyReleaseEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Space && !event->isAutoRepeat()) {
        spaceHeld_ = false;
        if (!panning_) {
            showToolCursor();
        }
        return;
    }
    QWidget::keyReleaseEvent(event);
}

namespace {

ToolInput Input(QPointF at, int button, Qt::KeyboardModifiers modifiers, double pressure,
                bool tablet) {
    return {static_cast<float>(at.x()),
            static_cast<float>(at.y()),
            button,
            {(modifiers & Qt::ShiftModifier) != 0, (modifiers & Qt::ControlModifier) != 0,
             (modifiers & Qt::AltModifier) != 0},
            pressure,
            tablet};
}

}  // namespace

void Form1::press(Qt::MouseButton button, Qt::KeyboardModifiers modifiers, QPointF at,
                  double pressure, bool tablet) {
    if (painter_ == nullptr || (pressed_ != nullptr && pressed_->holdsPointer())) {
        return;
    }
    const ToolInput input = Input(toolPoint(at), ButtonNumber(button), modifiers, pressure, tablet);
    pressed_ = &painter_->tools().forPress(input.modifiers);
    pressed_->press(input);
}

void Form1::drag(QPointF at, Qt::KeyboardModifiers modifiers, double pressure, bool tablet) {
    Tool* tool = pressed_;
    // Between clicks, a polygon still follows the pointer.
    if (tool == nullptr && painter_ != nullptr && painter_->tools().active().holdsPointer()) {
        tool = &painter_->tools().active();
    }
    if (tool != nullptr) {
        tool->drag(Input(toolPoint(at), 0, modifiers, pressure, tablet));
        refreshOverlay();
    }
}

void Form1::release(QPointF at, Qt::KeyboardModifiers modifiers) {
    if (pressed_ != nullptr) {
        pressed_->release(Input(toolPoint(at), 0, modifiers, 1.0, false));
        refreshOverlay();
    }
    pressed_ = nullptr;
}

// Plug-ins read what the last event said about the pen; the mouse is a pen
// held upright and pressed fully.
void Form1::recordPen(const PenReading& pen) {
    if (painter_ != nullptr) {
        painter_->state().pen = pen;
    }
}

void Form1::mousePressEvent(QMouseEvent* event) {
    recordPen(PenReading{});
    if (startPan(event->globalPosition())) {
        return;
    }
    if (forward(kDown, ButtonNumber(event->button()), event->modifiers(), event->position(), 1.0)) {
        return;
    }
    press(event->button(), event->modifiers(), event->position(), 1.0, false);
}

void Form1::mouseMoveEvent(QMouseEvent* event) {
    if (panning_) {
        const QPointF now = event->globalPosition();
        Q_EMIT panBy((panFrom_ - now).toPoint());
        panFrom_ = now;
        return;
    }
    recordPen(PenReading{});
    if (forward(kMove, HeldButton(event->buttons()), event->modifiers(), event->position(), 1.0)) {
        return;
    }
    drag(event->position(), event->modifiers(), 1.0, false);
}

void Form1::mouseReleaseEvent(QMouseEvent* event) {
    if (panning_) {
        panning_ = false;
        spaceHeld_ ? setCursor(Qt::OpenHandCursor) : showToolCursor();
        return;
    }
    if (forward(kUp, ButtonNumber(event->button()), event->modifiers(), event->position(), 1.0)) {
        return;
    }
    release(event->position(), event->modifiers());
}

// The pen's own events carry its pressure; taking them keeps Qt from making
// mouse events of them as well.
void Form1::tabletEvent(QTabletEvent* event) {
    const double pressure =
        calibration_ != nullptr ? calibration_->apply(event->pressure()) : event->pressure();
    recordPen(PenFromTilt(pressure, event->xTilt(), event->yTilt(), event->rotation()));
    const int kind = event->type() == QEvent::TabletPress     ? kDown
                     : event->type() == QEvent::TabletMove    ? kMove
                     : event->type() == QEvent::TabletRelease ? kUp
                                                              : -1;
    const int button = kind == kMove ? HeldButton(event->buttons()) : ButtonNumber(event->button());
    if (kind >= 0 && forward(kind, button, event->modifiers(), event->position(), pressure)) {
        event->accept();
        return;
    }
    switch (event->type()) {
        case QEvent::TabletPress:
            press(event->button(), event->modifiers(), event->position(), pressure, true);
            break;
        case QEvent::TabletMove:
            drag(event->position(), event->modifiers(), pressure, true);
            break;
        case QEvent::TabletRelease:
            release(event->position(), event->modifiers());
            break;
        default:
            return;
    }
    event->accept();
}

void Form1::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    const double s = scale();
    // Turned by other than quarter turns, the picture leaves window corners bare.
    if (toWindow_.m11() != 0 && toWindow_.m12() != 0) {
        painter.fillRect(event->rect(), palette().color(QPalette::Dark));
    }
    const QRect source = windowToImage_.mapRect(QRectF(event->rect()))
                             .toAlignedRect()
                             .adjusted(-1, -1, 1, 1)
                             .intersected(QRect(0, 0, document_.width, document_.height));
    if (source.isEmpty()) {
        return;
    }
    // From here on everything is drawn in tool units, which the one mapping
    // takes to the window.
    painter.setTransform(toolToWindow_);
    const QRectF target(source.left() * s, source.top() * s, source.width() * s,
                        source.height() * s);
    // Zoomed in, pixels stay crisp squares; zoomed out, they are averaged.
    painter.setRenderHint(QPainter::SmoothPixmapTransform, s < 1.0);
    if (IsFlatPicture(workspace_)) {
        const std::vector<OnionFrame> frames = onion_.frames();
        if (frames.empty()) {
            PlanesToImage(document_, source, picture_);
            painter.drawImage(target, picture_);
        } else {
            // The onion picture is kept whole; the damaged part of it is drawn.
            painter.drawImage(target,
                              onion_.blendFlat(document_.RBuffer, document_.GBuffer,
                                               document_.BBuffer, frames, source),
                              QRectF(source));
        }
    } else {
        drawLayers(painter, source, target);
    }
    if (!preview_.isNull()) {
        painter.drawImage(QRectF(previewArea_.left() * s, previewArea_.top() * s,
                                 previewArea_.width() * s, previewArea_.height() * s),
                          preview_);
    }
    if (view_.grid.shown) {
        drawGrid(painter, source);
    }
    if (painter_ != nullptr && painter_->state().options.alphaUse == AlphaUse::PaintOnAlpha &&
        document_.AlphaBitsFlag == 255) {
        painter.drawImage(target, MatteOverlay(document_, source));
    }
    ants_->follow();
    ants_->draw(painter, source, s);
    if (painter_ != nullptr) {
        DrawToolOverlay(painter, painter_->tools().active().overlay(), s);
    }
}

void Form1::drawLayers(QPainter& painter, const QRect& source, const QRectF& target) {
    if (!composite_.r.sameShape(document_.RBuffer)) {
        composite_ = TransparentPixels(document_.width, document_.height);
    }
    CompositeSources(VisibleSources(workspace_),
                     {source.left(), source.top(), source.width(), source.height()}, composite_);
    const std::vector<OnionFrame> frames = onion_.frames();
    const LayerPixels& shown =
        frames.empty() ? composite_ : onion_.blendLayered(composite_, frames, source);
    LayersToImage(shown, source, picture_);
    painter.drawImage(target, picture_);
}

// Lines on the pixel edges every grid spacing, where the damaged area lies;
// left out while they would stand closer than a few screen pixels.
void Form1::drawGrid(QPainter& painter, const QRect& source) const {
    constexpr double kClosest = 4.0;
    const GridState& grid = view_.grid;
    const double s = scale();
    if (grid.spacingX * s < kClosest || grid.spacingY * s < kClosest) {
        return;
    }
    painter.setPen(QPen(QColor(128, 128, 128, 160), 0));
    const double top = source.top() * s;
    const double bottom = (source.bottom() + 1) * s;
    const double left = source.left() * s;
    const double right = (source.right() + 1) * s;
    for (int x = (source.left() / grid.spacingX) * grid.spacingX; x <= source.right() + 1;
         x += grid.spacingX) {
        painter.drawLine(QPointF(x * s, top), QPointF(x * s, bottom));
    }
    for (int y = (source.top() / grid.spacingY) * grid.spacingY; y <= source.bottom() + 1;
         y += grid.spacingY) {
        painter.drawLine(QPointF(left, y * s), QPointF(right, y * s));
    }
}

}  // namespace wib

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QWidget>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <utility>

#include "core/observer_list.h"
#include "core/param_value.h"

namespace wib {

class FrameStore;
class Workspace;

// Runs a command with the values given; true when it was done.
using TimelineRun =
    std::function<bool(const std::string& id, const std::map<std::string, ParamValue>& values)>;

// The timeline's grid: frames as columns (a held frame as a longer cell),
// layers as rows (the top layer first), a thumbnail per cell, a header with
// frame numbers, the play range and the playhead. A click or a drag in the
// header moves the playhead; a click selects a frame, shift-click a range,
// and dragging the selection moves it. Everything it changes goes through
// commands.
class TimelineGrid : public QWidget {
    Q_OBJECT
  public:
    TimelineGrid(FrameStore& store, TimelineRun run, QWidget* parent = nullptr);

    // The selected range, first <= last.
    std::pair<int, int> selection() const { return {first_, last_}; }
    // The frame under x, -1 outside every frame.
    int frameAt(int x) const;
    // The left edge of frame `frame` (the right edge of the last for
    // FrameCount()).
    int columnX(int frame) const;
    // The insertion point (0..FrameCount()) nearest x, for a drop.
    int gapAt(int x) const;
    QSize sizeHint() const override;

    static constexpr int kHeader = 22;
    static constexpr int kRow = 44;
    static constexpr int kGutter = 92;
    static constexpr int kTick = 58;  // width of one tick of exposure

  protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

  private:
    void goTo(int frame);
    void select(int first, int last);
    // The thumbnail of layer `layer` in frame `frame`, made when first asked.
    const QImage& thumbnail(int layer, int frame);
    void framesChanged();
    void paintHeader(QPainter& painter);
    void paintRows(QPainter& painter);
    int rows() const;

    FrameStore& store_;
    Workspace& workspace_;
    TimelineRun run_;
    int first_ = 0;
    int last_ = 0;
    int anchor_ = 0;
    bool scrubbing_ = false;
    int pressFrame_ = -1;
    int pressX_ = 0;
    bool dragging_ = false;
    int dropGap_ = -1;
    // By layer and frame id, so that moved frames keep theirs.
    std::map<std::pair<int, std::uint32_t>, QImage> thumbnails_;
    Subscription storeChanged_, imageEdited_, layersChanged_;
};

}  // namespace wib

// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/timeline_grid.h"

#include <QContextMenuEvent>
#include <QInputDialog>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <algorithm>
#include <cstdlib>

#include "anim/frame_store.h"
#include "core/layer_edit.h"
#include "core/workspace.h"
#include "ui/frame_thumbnail.h"

namespace wib {

namespace {

constexpr int kThumbW = 48;
constexpr int kThumbH = 34;
constexpr int kDragStart = 6;  // pixels the pointer moves before a drag begins

ParamValue Value(int v) {
    return ParamValue{static_cast<long long>(v)};
}

}  // namespace

TimelineGrid::TimelineGrid(FrameStore& store, TimelineRun run, QWidget* parent)
    : QWidget(parent), store_(store), workspace_(store.workspace()), run_(std::move(run)) {
    setMouseTracking(false);
    storeChanged_ = store_.changed.subscribe([this] { framesChanged(); });
    // Only the frame shown can change under a stroke: its thumbnails are made
    // again when next painted, the others are kept.
    imageEdited_ = workspace_.events.imageEdited.subscribe([this] {
        if (store_.FrameCount() > 0) {
            const int shown = std::min(store_.CurrentFrame(), store_.FrameCount() - 1);
            const std::uint32_t id = store_.frameIds()[static_cast<std::size_t>(shown)];
            std::erase_if(thumbnails_,
                          [id](const auto& entry) { return entry.first.second == id; });
        }
        update();
    });
    layersChanged_ = workspace_.events.layersChanged.subscribe([this] {
        thumbnails_.clear();
        framesChanged();
    });
}

int TimelineGrid::rows() const {
    return std::max(LayerCount(workspace_), 1);
}

void TimelineGrid::framesChanged() {
    const int count = store_.FrameCount();
    first_ = std::clamp(first_, 0, std::max(count - 1, 0));
    last_ = std::clamp(last_, first_, std::max(count - 1, 0));
    // Frames that are gone take their thumbnails with them.
    const auto& ids = store_.frameIds();
    std::erase_if(thumbnails_, [&ids](const auto& entry) {
        return std::find(ids.begin(), ids.end(), entry.first.second) == ids.end();
    });
    updateGeometry();
    resize(sizeHint());
    update();
}

int TimelineGrid::columnX(int frame) const {
    int x = kGutter;
    for (int f = 0; f < frame && f < store_.FrameCount(); ++f) {
        x += kTick * store_.exposure(f);
    }
    return x;
}

int TimelineGrid::frameAt(int x) const {
    int left = kGutter;
    for (int f = 0; f < store_.FrameCount(); ++f) {
        const int right = left + kTick * store_.exposure(f);
        if (x >= left && x < right) {
            return f;
        }
        left = right;
    }
    return -1;
}

int TimelineGrid::gapAt(int x) const {
    int left = kGutter;
    for (int f = 0; f < store_.FrameCount(); ++f) {
        const int width = kTick * store_.exposure(f);
        if (x < left + width / 2) {
            return f;
        }
        left += width;
    }
    return store_.FrameCount();
}

QSize TimelineGrid::sizeHint() const {
    return {columnX(store_.FrameCount()) + kTick, kHeader + rows() * kRow + 2};
}

void TimelineGrid::goTo(int frame) {
    if (frame >= 0 && frame != store_.CurrentFrame()) {
        run_("anim.goto_frame", {{"frame", Value(frame)}});
    }
}

void TimelineGrid::select(int first, int last) {
    first_ = std::min(first, last);
    last_ = std::max(first, last);
    update();
}

const QImage& TimelineGrid::thumbnail(int layer, int frame) {
    const std::uint32_t id = store_.frameIds()[static_cast<std::size_t>(frame)];
    auto [entry, made] = thumbnails_.try_emplace({layer, id});
    if (made) {
        entry->second = LayerFrameThumbnail(workspace_, store_, layer, frame, kThumbW, kThumbH);
    }
    return entry->second;
}

void TimelineGrid::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), palette().window());
    if (store_.FrameCount() == 0) {
        painter.drawText(rect().adjusted(8, 0, 0, 0), Qt::AlignVCenter | Qt::AlignLeft,
                         tr("No animation"));
        return;
    }
    paintHeader(painter);
    paintRows(painter);
}

void TimelineGrid::paintHeader(QPainter& painter) {
    const int count = store_.FrameCount();
    const PlayRange& range = store_.playRange();
    const int out = range.out < 0 ? count - 1 : std::min(range.out, count - 1);
    const int in = std::clamp(range.in, 0, out);
    painter.fillRect(QRect(0, 0, width(), kHeader), palette().mid());
    // The play range, with brackets at its marks.
    const int inX = columnX(in);
    const int outX = columnX(out + 1);
    painter.fillRect(QRect(inX, kHeader - 6, outX - inX, 6), QColor(120, 170, 230));
    painter.setPen(QPen(QColor(30, 80, 160), 2));
    painter.drawLine(inX + 1, 2, inX + 1, kHeader - 1);
    painter.drawLine(outX - 1, 2, outX - 1, kHeader - 1);
    painter.setPen(palette().text().color());
    painter.drawText(QRect(4, 0, kGutter - 8, kHeader), Qt::AlignVCenter,
                     store_.playRange().pingPong ? tr("ping-pong")
                     : store_.playRange().loop   ? tr("loop")
                                                 : tr("once"));
    for (int f = 0; f < count; ++f) {
        const QRect cell(columnX(f), 0, kTick * store_.exposure(f), kHeader - 6);
        painter.drawText(cell.adjusted(4, 0, 0, 0), Qt::AlignVCenter | Qt::AlignLeft,
                         store_.exposure(f) > 1
                             ? QStringLiteral("%1 (x%2)").arg(f).arg(store_.exposure(f))
                             : QString::number(f));
    }
}

void TimelineGrid::paintRows(QPainter& painter) {
    const int count = store_.FrameCount();
    const int layers = rows();
    const int shown = std::min(store_.CurrentFrame(), count - 1);
    for (int row = 0; row < layers; ++row) {
        const int layer = layers - 1 - row;
        const int top = kHeader + row * kRow;
        const bool currentLayer = layer == CurrentLayer(workspace_);
        painter.fillRect(QRect(0, top, kGutter, kRow),
                         currentLayer ? palette().highlight() : palette().button());
        painter.setPen(currentLayer ? palette().highlightedText().color()
                                    : palette().buttonText().color());
        painter.drawText(QRect(6, top, kGutter - 8, kRow), Qt::AlignVCenter | Qt::AlignLeft,
                         QString::fromStdString(LayerAt(workspace_, layer).name));
        for (int f = 0; f < count; ++f) {
            const QRect cell(columnX(f), top, kTick * store_.exposure(f), kRow);
            const bool selected = f >= first_ && f <= last_;
            painter.fillRect(cell.adjusted(1, 1, -1, -1),
                             selected ? QColor(170, 200, 240) : QColor(225, 225, 225));
            painter.drawImage(cell.left() + 5, top + (kRow - kThumbH) / 2, thumbnail(layer, f));
            if (store_.exposure(f) > 1) {
                // The hold: a bar from the thumbnail to the cell's end.
                painter.fillRect(QRect(cell.left() + kThumbW + 8, top + kRow / 2 - 3,
                                       cell.width() - kThumbW - 14, 6),
                                 QColor(110, 110, 110));
            }
            painter.setPen(QColor(150, 150, 150));
            painter.drawRect(cell.adjusted(0, 0, -1, -1));
        }
    }
    // The frame shown, outlined through every row, and the playhead.
    const QRect current(columnX(shown), kHeader, kTick * store_.exposure(shown), layers * kRow);
    painter.setPen(QPen(QColor(220, 60, 40), 2));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(current.adjusted(1, 1, -1, -1));
    painter.fillRect(QRect(columnX(shown), 0, kTick * store_.exposure(shown), kHeader - 6),
                     QColor(220, 60, 40, 90));
    if (dragging_ && dropGap_ >= 0) {
        const int x = columnX(dropGap_);
        painter.fillRect(QRect(x - 2, kHeader, 4, layers * kRow), QColor(30, 80, 160));
    }
}

void TimelineGrid::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        return;
    }
    const QPoint at = event->position().toPoint();
    const int frame = frameAt(at.x());
    if (at.y() < kHeader) {
        scrubbing_ = true;
        goTo(frame);
        return;
    }
    if (frame < 0) {
        return;
    }
    const int row = (at.y() - kHeader) / kRow;
    const int layer = rows() - 1 - row;
    if (layer >= 0 && layer != CurrentLayer(workspace_)) {
        run_("layer.select", {{"index", Value(layer)}});
    }
    if ((event->modifiers() & Qt::ShiftModifier) != 0) {
        select(anchor_, frame);
        return;
    }
    pressFrame_ = frame;
    pressX_ = at.x();
    if (frame < first_ || frame > last_) {
        anchor_ = frame;
        select(frame, frame);
    }
    goTo(frame);
}

void TimelineGrid::mouseMoveEvent(QMouseEvent* event) {
    const int x = event->position().toPoint().x();
    if (scrubbing_) {
        goTo(frameAt(std::clamp(x, kGutter, columnX(store_.FrameCount()) - 1)));
        return;
    }
    if (pressFrame_ < 0) {
        return;
    }
    if (!dragging_ && std::abs(x - pressX_) >= kDragStart) {
        dragging_ = true;
    }
    if (dragging_) {
        dropGap_ = gapAt(x);
        update();
    }
}

void TimelineGrid::mouseReleaseEvent(QMouseEvent* event) {
    scrubbing_ = false;
    if (dragging_ && dropGap_ >= 0) {
        const int length = last_ - first_ + 1;
        // The move's target counts the frames without the range.
        if (dropGap_ < first_ || dropGap_ > last_ + 1) {
            const int to = dropGap_ < first_ ? dropGap_ : dropGap_ - length;
            if (run_("anim.move_frames",
                     {{"first", Value(first_)}, {"last", Value(last_)}, {"to", Value(to)}})) {
                select(to, to + length - 1);
                anchor_ = to;
            }
        }
    } else if (pressFrame_ >= 0 && (event->modifiers() & Qt::ShiftModifier) == 0) {
        anchor_ = pressFrame_;
        select(pressFrame_, pressFrame_);
    }
    dragging_ = false;
    dropGap_ = -1;
    pressFrame_ = -1;
    update();
}

void TimelineGrid::contextMenuEvent(QContextMenuEvent* event) {
    if (store_.FrameCount() == 0) {
        return;
    }
    const int clicked = frameAt(event->pos().x());
    if (clicked >= 0 && (clicked < first_ || clicked > last_)) {
        anchor_ = clicked;
        select(clicked, clicked);
    }
    const int at = clicked >= 0 ? clicked : store_.FrameCount();
    const std::map<std::string, ParamValue> range{{"first", Value(first_)}, {"last", Value(last_)}};
    QMenu menu(this);
    auto add = [&](const QString& text, std::function<void()> action) {
        connect(menu.addAction(text), &QAction::triggered, this, std::move(action));
    };
    add(tr("Duplicate"), [this, range] { run_("anim.duplicate_frames", range); });
    add(tr("Reverse"), [this, range] { run_("anim.reverse_frames", range); });
    add(tr("Copy"), [this, range] { run_("anim.copy_frames", range); });
    add(tr("Paste before this frame"), [this, at] {
        run_("anim.paste_frames", {{"at", Value(at)}});
    });
    menu.addSeparator();
    add(tr("Insert copy"), [this] { run_("anim.insert_frame", {}); });
    add(tr("Insert blank"), [this] { run_("anim.insert_blank_frame", {}); });
    add(tr("Delete"), [this] { run_("anim.delete_frame", {}); });
    menu.addSeparator();
    add(tr("Exposure..."), [this, at] {
        bool ok = false;
        const int ticks = QInputDialog::getInt(this, tr("Exposure"), tr("Held for (ticks):"),
                                               store_.exposure(at), 1, 1000, 1, &ok);
        if (ok) {
            run_("anim.set_exposure", {{"frame", Value(at)}, {"ticks", Value(ticks)}});
        }
    });
    add(tr("Set in mark"), [this, at] {
        run_("anim.play_range", {{"in", Value(at)}, {"out", Value(store_.playRange().out)}});
    });
    add(tr("Set out mark"), [this, at] {
        run_("anim.play_range", {{"in", Value(store_.playRange().in)}, {"out", Value(at)}});
    });
    add(tr("Clear marks"), [this] {
        run_("anim.play_range", {{"in", Value(0)}, {"out", Value(-1)}});
    });
    menu.exec(event->globalPos());
}

}  // namespace wib

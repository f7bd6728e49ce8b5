// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/brush_keys_panel.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <algorithm>

#include "anim/frame_store.h"
#include "core/commands.h"
#include "core/workspace.h"

namespace wib {

namespace {

// One parameter's curve: a line per channel over the frames, a dot per key,
// the current frame marked.
class CurveView : public QWidget {
  public:
    CurveView(const FrameStore& store, BrushKey key, QWidget* parent)
        : QWidget(parent), store_(store), key_(key) {
        // As low as the row's buttons, so that the panel leaves room to the
        // panels beside it; it grows with the dock.
        setMinimumSize(180, 28);
    }

  protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.fillRect(rect(), QColor(250, 250, 250));
        painter.setPen(QColor(180, 180, 180));
        painter.drawRect(rect().adjusted(0, 0, -1, -1));
        const BrushKeyframer& keys = store_.brushKeys();
        const auto& keyed = keys.keys(key_);
        const int last =
            std::max({store_.FrameCount() - 1, keyed.empty() ? 0 : keyed.rbegin()->first, 1});
        const double top = key_ == BrushKey::Size ? 256 : key_ == BrushKey::Angle ? 359 : 255;
        auto x = [this, last](int frame) { return 4 + (width() - 8) * frame / last; };
        auto y = [this, top](float v) {
            return height() - 4 - static_cast<int>((height() - 8) * v / top);
        };
        const int shown = std::min(store_.CurrentFrame(), std::max(store_.FrameCount() - 1, 0));
        painter.setPen(QColor(220, 60, 40));
        painter.drawLine(x(shown), 0, x(shown), height());
        if (keyed.empty()) {
            return;
        }
        static const std::array<QColor, 3> kChannelColours{QColor(200, 40, 40), QColor(40, 150, 40),
                                                           QColor(40, 60, 200)};
        for (int c = 0; c < BrushKeyChannels(key_); ++c) {
            painter.setPen(key_ == BrushKey::Colour ? kChannelColours[static_cast<std::size_t>(c)]
                                                    : QColor(40, 40, 40));
            for (int f = 1; f <= last; ++f) {
                const float before = (*keys.valuesAt(key_, f - 1))[static_cast<std::size_t>(c)];
                const float after = (*keys.valuesAt(key_, f))[static_cast<std::size_t>(c)];
                painter.drawLine(x(f - 1), y(before), x(f), y(after));
            }
            for (const auto& [frame, values] : keyed) {
                painter.drawEllipse(QPoint(x(frame), y(values[static_cast<std::size_t>(c)])), 3, 3);
            }
        }
    }

  private:
    const FrameStore& store_;
    BrushKey key_;
};

ParamValue Value(long long v) {
    return ParamValue{v};
}

}  // namespace

BrushKeysPanel::BrushKeysPanel(FrameStore& store, const CommandRegistry& commands, QWidget* parent)
    : QDockWidget(tr("Brush keys"), parent), store_(store), commands_(commands) {
    setObjectName("BrushKeysPanel");
    auto* body = new QWidget(this);
    auto* grid = new QGridLayout(body);
    enabled_ = new QCheckBox(tr("Keyframe the brush"), body);
    grid->addWidget(enabled_, 0, 0, 1, 4);
    connect(enabled_, &QCheckBox::toggled, this, [this](bool on) {
        run("brush.keyframing", {{"on", Value(on ? -1 : 0)}});
    });
    static const std::array<const char*, 4> kCaptions{"Size", "Opacity", "Angle", "Colour"};
    for (std::size_t i = 0; i < kBrushKeys.size(); ++i) {
        const BrushKey key = kBrushKeys[i];
        const int row = static_cast<int>(i) + 1;
        grid->addWidget(new QLabel(tr(kCaptions[i]), body), row, 0);
        curves_[i] = new CurveView(store, key, body);
        grid->addWidget(curves_[i], row, 1);
        kinds_[i] = new QComboBox(body);
        kinds_[i]->addItems({tr("Linear"), tr("Catmull-Rom")});
        grid->addWidget(kinds_[i], row, 2);
        connect(kinds_[i], &QComboBox::currentIndexChanged, this, [this, i](int kind) {
            run("brush.key_curve",
                {{"parameter", Value(static_cast<long long>(i))}, {"kind", Value(kind)}});
        });
        auto* add = new QPushButton(tr("Add key"), body);
        add->setToolTip(tr("Add a key at the current frame with the brush's value"));
        grid->addWidget(add, row, 3);
        connect(add, &QPushButton::clicked, this, [this, i] {
            run("brush.add_key", {{"parameter", Value(static_cast<long long>(i))}});
        });
    }
    grid->setColumnStretch(1, 1);
    setWidget(body);
    changed_ = store.changed.subscribe([this] { showKeys(); });
    showKeys();
}

bool BrushKeysPanel::run(const std::string& id, const std::map<std::string, ParamValue>& values) {
    return commands_.run(store_.workspace(), id, values).status == CommandOutcome::Status::Done;
}

void BrushKeysPanel::showKeys() {
    const QSignalBlocker block(enabled_);
    enabled_->setChecked(store_.brushKeys().enabled());
    for (std::size_t i = 0; i < kBrushKeys.size(); ++i) {
        const QSignalBlocker blockKind(kinds_[i]);
        kinds_[i]->setCurrentIndex(store_.brushKeys().spline(kBrushKeys[i]) ? 1 : 0);
        curves_[i]->update();
    }
}

}  // namespace wib

// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/layers_panel.h"

#include <QApplication>
#include <QComboBox>
#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QMouseEvent>
#include <QScrollArea>
#include <QSignalBlocker>
#include <QSlider>
#include <QTimer>
#include <QToolButton>
#include <QVBoxLayout>
#include <algorithm>
#include <cstdlib>

#include "core/layer_edit.h"
#include "core/workspace.h"
#include "ui/layer_list_row.h"
#include "ui/layer_thumbnail.h"

namespace wib {

namespace {

// Long enough that a stroke's redraws only restart the wait, short enough to
// look immediate once the pen lifts.
constexpr int kThumbnailDelayMs = 250;
// Rows the list shows however many panels share the side with it.
constexpr int kMinimumRows = 4;

struct Button {
    const char* name;
    const char* glyph;
    const char* command;
};

constexpr Button kButtons[] = {
    {"cmdNewLayer", "+", "layer.new"},        {"cmdDuplicate", "\u2750", "layer.duplicate"},
    {"cmdDelete", "\u2716", "layer.delete"},  {"cmdMergeDown", "\u2913", "layer.merge_down"},
    {"cmdMoveUp", "\u25B2", "layer.move_up"}, {"cmdMoveDown", "\u25BC", "layer.move_down"},
    {"cmdProperties", "\u2026", "layer.set"},
};

QString ToolTip(const CommandSpec& command) {
    QString tip = QString::fromStdString(command.caption).remove('&');
    if (!command.shortcut.empty()) {
        tip += QStringLiteral(" (%1)").arg(QString::fromStdString(command.shortcut));
    }
    return tip;
}

}  // namespace

Layers_panel::Layers_panel(Workspace& workspace, const CommandRegistry& commands, QWidget* parent)
    : QDockWidget(tr("Layers"), parent), workspace_(workspace), commands_(commands) {
    setObjectName("Layers_panel");
    auto* body = new QWidget(this);
    auto* column = new QVBoxLayout(body);
    column->setContentsMargins(4, 4, 4, 4);

    auto* modeLine = new QHBoxLayout;
    mode_ = new QComboBox(body);
    mode_->setObjectName("cboMode");
    for (int i = 0; i < kBlendModeCount; ++i) {
        mode_->addItem(QString::fromLatin1(BlendModeName(static_cast<BlendMode>(i))));
    }
    modeLine->addWidget(new QLabel(tr("Mode"), body));
    modeLine->addWidget(mode_, 1);
    column->addLayout(modeLine);

    auto* opacityLine = new QHBoxLayout;
    opacity_ = new QSlider(Qt::Horizontal, body);
    opacity_->setObjectName("sldOpacity");
    opacity_->setRange(0, 255);
    opacityText_ = new QLabel(body);
    opacityText_->setMinimumWidth(28);
    opacityText_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    opacityLine->addWidget(new QLabel(tr("Opacity"), body));
    opacityLine->addWidget(opacity_, 1);
    opacityLine->addWidget(opacityText_);
    column->addLayout(opacityLine);

    scroll_ = new QScrollArea(body);
    scroll_->setObjectName("LayerList");
    scroll_->setWidgetResizable(true);
    list_ = new QWidget(scroll_);
    list_->setBackgroundRole(QPalette::Base);
    list_->setAutoFillBackground(true);
    auto* rows = new QVBoxLayout(list_);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(1);
    rows->addStretch();
    scroll_->setWidget(list_);
    const int rowHeight = LayerListRow(nullptr).sizeHint().height() + rows->spacing();
    scroll_->setMinimumHeight(kMinimumRows * rowHeight + 2 * scroll_->frameWidth());
    column->addWidget(scroll_, 1);
    dropMark_ = new QFrame(list_);
    dropMark_->setFrameShape(QFrame::HLine);
    dropMark_->setLineWidth(2);
    dropMark_->hide();

    auto* buttonLine = new QHBoxLayout;
    buttonLine->setSpacing(2);
    for (const Button& entry : kButtons) {
        const CommandSpec* command = commands_.find(entry.command);
        if (command == nullptr) {
            continue;
        }
        auto* button = new QToolButton(body);
        button->setObjectName(entry.name);
        button->setText(QString::fromUtf8(entry.glyph));
        button->setToolTip(ToolTip(*command));
        button->setMinimumSize(26, 24);
        const std::string id = entry.command;
        connect(button, &QToolButton::clicked, this, [this, id] { runAsking(id); });
        buttonLine->addWidget(button);
        buttons_.emplace_back(button, id);
    }
    buttonLine->addStretch();
    column->addLayout(buttonLine);
    setWidget(body);
    setMinimumWidth(230);

    connect(mode_, &QComboBox::activated, this, [this](int mode) {
        setCurrentProperty("mode", std::string(BlendModeName(static_cast<BlendMode>(mode))));
    });
    // A drag of the slider is one change, made when it is let go; steps by
    // keys, wheel or clicks on the groove are each one.
    const auto setOpacity = [this] {
        setCurrentProperty("opacity", static_cast<long long>(opacity_->value()));
    };
    connect(opacity_, &QSlider::sliderReleased, this, setOpacity);
    connect(opacity_, &QSlider::valueChanged, this, [this, setOpacity](int value) {
        opacityText_->setNum(value);
        if (!opacity_->isSliderDown()) {
            setOpacity();
        }
    });

    thumbnailTimer_ = new QTimer(this);
    thumbnailTimer_->setSingleShot(true);
    thumbnailTimer_->setInterval(kThumbnailDelayMs);
    connect(thumbnailTimer_, &QTimer::timeout, this, &Layers_panel::makeThumbnails);
    layersSubscription_ = workspace_.events.layersChanged.subscribe([this] { showLayers(); });
    showLayers();
}

void Layers_panel::addRow() {
    auto* row = new LayerListRow(list_);
    row->installEventFilter(this);
    auto* rows = static_cast<QVBoxLayout*>(list_->layout());
    rows->insertWidget(static_cast<int>(rows_.size()), row);
    connect(row, &LayerListRow::visibilityToggled, this, [this, row](bool visible) {
        run("layer.set", {{"index", static_cast<long long>(layerOfRow(row))},
                          {"visible", visible ? -1LL : 0LL}});
    });
    connect(row, &LayerListRow::lockToggled, this, [this, row](bool locked) {
        run("layer.set",
            {{"index", static_cast<long long>(layerOfRow(row))}, {"locked", locked ? -1LL : 0LL}});
    });
    connect(row, &LayerListRow::renamed, this, [this, row](const QString& name) {
        run("layer.set",
            {{"index", static_cast<long long>(layerOfRow(row))}, {"name", name.toStdString()}});
    });
    rows_.push_back(row);
}

void Layers_panel::showLayers() {
    const int count = LayerCount(workspace_);
    const int current = CurrentLayer(workspace_);
    while (rowCount() < count) {
        addRow();
    }
    while (rowCount() > count) {
        // Later: the row may be the one whose signal brought us here.
        rows_.back()->hide();
        rows_.back()->deleteLater();
        rows_.pop_back();
    }
    for (int r = 0; r < count; ++r) {
        const int layer = count - 1 - r;
        rows_[static_cast<std::size_t>(r)]->showLayer(LayerAt(workspace_, layer), layer == current);
    }
    // Laid out first, so that the scroll knows where the current row is.
    list_->layout()->activate();
    scroll_->ensureWidgetVisible(rowOfLayer(current), 0, 0);
    const LayerProperties& shown = LayerAt(workspace_, current);
    {
        const QSignalBlocker quietMode(mode_);
        const QSignalBlocker quietOpacity(opacity_);
        mode_->setCurrentIndex(static_cast<int>(shown.mode));
        opacity_->setValue(shown.opacity);
    }
    opacityText_->setNum(shown.opacity);
    for (const auto& [button, id] : buttons_) {
        if (id == "layer.delete") {
            button->setEnabled(count > 1);
        } else if (id == "layer.merge_down" || id == "layer.move_down") {
            button->setEnabled(current > 0);
        } else if (id == "layer.move_up") {
            button->setEnabled(current < count - 1);
        }
    }
    thumbnailsStale();
}

void Layers_panel::thumbnailsStale() {
    thumbnailTimer_->start();
}

void Layers_panel::makeThumbnails() {
    const Document& doc = workspace_.document;
    const int count = rowCount();
    for (int r = 0; r < count; ++r) {
        rows_[static_cast<std::size_t>(r)]->setThumbnail(
            LayerThumbnail(LayerPlanesOf(workspace_, count - 1 - r), doc.width, doc.height,
                           LayerListRow::kThumbnailSize));
    }
}

LayerListRow* Layers_panel::rowOfLayer(int index) const {
    const int r = rowCount() - 1 - index;
    return r >= 0 && r < rowCount() ? rows_[static_cast<std::size_t>(r)] : nullptr;
}

int Layers_panel::layerOfRow(const LayerListRow* row) const {
    const auto found = std::find(rows_.begin(), rows_.end(), row);
    return rowCount() - 1 - static_cast<int>(found - rows_.begin());
}

void Layers_panel::dropRow(int from, int gap) {
    const int count = rowCount();
    if (from < 0 || from >= count || gap < 0 || gap > count) {
        return;
    }
    // The rows after the taken one close up before it is put back.
    const int place = gap > from ? gap - 1 : gap;
    if (place != from) {
        run("layer.move", {{"index", static_cast<long long>(count - 1 - from)},
                           {"to", static_cast<long long>(count - 1 - place)}});
    }
}

int Layers_panel::gapAt(int y) const {
    for (int r = 0; r < rowCount(); ++r) {
        if (y < rows_[static_cast<std::size_t>(r)]->geometry().center().y()) {
            return r;
        }
    }
    return rowCount();
}

void Layers_panel::showDropMark(int gap) {
    const int y = gap < rowCount() ? rows_[static_cast<std::size_t>(gap)]->geometry().top()
                                   : rows_.back()->geometry().bottom() + 1;
    dropMark_->setGeometry(0, std::max(0, y - 1), list_->width(), 3);
    dropMark_->raise();
    dropMark_->show();
}

bool Layers_panel::eventFilter(QObject* watched, QEvent* event) {
    auto* row = qobject_cast<LayerListRow*>(watched);
    if (row == nullptr || std::find(rows_.begin(), rows_.end(), row) == rows_.end()) {
        return QDockWidget::eventFilter(watched, event);
    }
    const auto* mouse = dynamic_cast<const QMouseEvent*>(event);
    if (mouse == nullptr) {
        return QDockWidget::eventFilter(watched, event);
    }
    const int listY = row->mapTo(list_, mouse->position().toPoint()).y();
    switch (event->type()) {
        case QEvent::MouseButtonPress:
            if (mouse->button() == Qt::LeftButton) {
                pressed_ = row;
                pressY_ = listY;
                dragging_ = false;
            }
            return true;
        case QEvent::MouseMove:
            if (pressed_ != nullptr && (mouse->buttons() & Qt::LeftButton)) {
                dragging_ =
                    dragging_ || std::abs(listY - pressY_) >= QApplication::startDragDistance();
                if (dragging_) {
                    showDropMark(gapAt(listY));
                }
            }
            return true;
        case QEvent::MouseButtonRelease: {
            LayerListRow* from = pressed_;
            pressed_ = nullptr;
            dropMark_->hide();
            if (from == nullptr || mouse->button() != Qt::LeftButton) {
                return true;
            }
            const int fromRow =
                static_cast<int>(std::find(rows_.begin(), rows_.end(), from) - rows_.begin());
            if (dragging_) {
                dropRow(fromRow, gapAt(listY));
            } else if (layerOfRow(from) != CurrentLayer(workspace_)) {
                run("layer.select", {{"index", static_cast<long long>(layerOfRow(from))}});
            }
            dragging_ = false;
            return true;
        }
        case QEvent::MouseButtonDblClick:
            if (row->onName(mouse->position().toPoint())) {
                row->beginRename();
            } else {
                runAsking("layer.set");
            }
            return true;
        default:
            return QDockWidget::eventFilter(watched, event);
    }
}

void Layers_panel::setCurrentProperty(const std::string& name, ParamValue value) {
    run("layer.set",
        {{"index", static_cast<long long>(CurrentLayer(workspace_))}, {name, std::move(value)}});
}

void Layers_panel::run(const std::string& id, const std::map<std::string, ParamValue>& values) {
    const CommandOutcome outcome = commands_.run(workspace_, id, values);
    if (outcome.status == CommandOutcome::Status::BadParameter ||
        outcome.status == CommandOutcome::Status::UnknownCommand) {
        workspace_.host.prompter.message(outcome.error);
    }
    // A refused change leaves the controls showing what it tried.
    if (outcome.status != CommandOutcome::Status::Done) {
        showLayers();
    }
}

void Layers_panel::runAsking(const std::string& id) {
    const CommandOutcome outcome = commands_.runAsking(workspace_, id);
    if (outcome.status == CommandOutcome::Status::BadParameter ||
        outcome.status == CommandOutcome::Status::UnknownCommand) {
        workspace_.host.prompter.message(outcome.error);
    }
}

}  // namespace wib

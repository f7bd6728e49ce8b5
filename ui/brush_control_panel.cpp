// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/brush_control_panel.h"

#include <QAbstractButton>
#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QRadioButton>
#include <QScrollArea>
#include <QSlider>
#include <QSpinBox>
#include <QToolButton>
#include <cstring>

#include "core/workspace.h"
#include "paint/brush_controls.h"
#include "paint/paint_session.h"
#include "paint/paper.h"

namespace wib {

namespace {

// Shows the tip of the current brush as it paints.
class BrushPreview : public QWidget {
  public:
    BrushPreview(const PaintSession& session, QWidget* parent)
        : QWidget(parent), session_(session) {
        setObjectName("BrushPreview");
        setFixedSize(96, 96);
    }

  protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.fillRect(rect(), Qt::white);
        const PaintState& state = session_.state();
        const BrushTip& tip = state.tip;
        if (tip.coverage.empty()) {
            return;
        }
        QImage image(tip.width, tip.height, QImage::Format_ARGB32);
        const PackedColour colour = session_.workspace().colours.primary;
        for (int y = 0; y < tip.height; ++y) {
            for (int x = 0; x < tip.width; ++x) {
                image.setPixel(x, y, qRgba(colour.r, colour.g, colour.b, tip.at(x, y)));
            }
        }
        const QSize shown = image.size().scaled(size() - QSize(8, 8), Qt::KeepAspectRatio);
        const QRect target(QPoint((width() - shown.width()) / 2, (height() - shown.height()) / 2),
                           shown);
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.drawImage(target, image);
    }

  private:
    const PaintSession& session_;
};

}  // namespace

BrushControlPanel::BrushControlPanel(const char* panelName, const QString& title,
                                     PaintSession& session, QWidget* parent)
    : QDockWidget(title, parent), session_(session) {
    setObjectName(panelName);
    auto* body = new QWidget;
    form_ = new QFormLayout(body);
    form_->setContentsMargins(6, 4, 6, 4);
    form_->setVerticalSpacing(3);
    for (const BrushControl& control : BrushControls()) {
        if (control.panel != nullptr && std::strcmp(control.panel, panelName) == 0) {
            addControl(control);
        }
    }
    body->setMinimumWidth(330);
    auto* scroll = new QScrollArea(this);
    scroll->setWidget(body);
    scroll->setWidgetResizable(true);
    scroll->setFrameShape(QFrame::NoFrame);
    setWidget(scroll);
}

void BrushControlPanel::changed(const BrushControl& control, int value) {
    if (showing_) {
        return;
    }
    SetBrushControl(session_.state().options, control, value);
    session_.optionsChanged();
}

void BrushControlPanel::addControl(const BrushControl& control) {
    const QString caption = QString::fromUtf8(control.caption);
    const BrushControl* bound = &control;
    switch (control.kind) {
        case ControlKind::Toggle: {
            auto* box = new QCheckBox(caption);
            box->setObjectName(control.names[0]);
            connect(box, &QCheckBox::toggled, this,
                    [this, bound](bool on) { changed(*bound, on ? 1 : 0); });
            readers_.push_back(
                [this, box, bound] { box->setChecked(bound->get(session_.state().options) != 0); });
            form_->addRow(box);
            break;
        }
        case ControlKind::Group: {
            auto* row = new QWidget;
            auto* layout = new QHBoxLayout(row);
            layout->setContentsMargins(0, 0, 0, 0);
            auto* group = new QButtonGroup(row);
            // A group whose first button stands for a value above its minimum
            // may have no button down: its buttons then toggle off too.
            const bool noneAllowed = control.firstValue > control.minimum;
            group->setExclusive(!noneAllowed);
            for (std::size_t i = 0; i < control.names.size(); ++i) {
                auto* button = new QToolButton(row);
                button->setObjectName(control.names[i]);
                button->setText(i < control.buttonCaptions.size()
                                    ? QString::fromUtf8(control.buttonCaptions[i])
                                    : QString::fromUtf8(control.names[i]));
                button->setCheckable(true);
                group->addButton(button, control.firstValue + static_cast<int>(i));
                layout->addWidget(button);
                const int value = control.firstValue + static_cast<int>(i);
                connect(button, &QToolButton::toggled, this,
                        [this, bound, group, value, noneAllowed, button](bool on) {
                            if (on) {
                                if (noneAllowed) {
                                    for (QAbstractButton* other : group->buttons()) {
                                        if (other != button) {
                                            const QSignalBlocker block(other);
                                            other->setChecked(false);
                                        }
                                    }
                                }
                                changed(*bound, value);
                            } else if (noneAllowed && group->checkedButton() == nullptr) {
                                changed(*bound, bound->minimum);
                            }
                        });
            }
            layout->addStretch();
            readers_.push_back([this, group, bound] {
                const int value = bound->get(session_.state().options);
                for (QAbstractButton* button : group->buttons()) {
                    button->setChecked(group->id(button) == value);
                }
            });
            form_->addRow(caption + ':', row);
            break;
        }
        case ControlKind::Slider: {
            if (control.valueName != nullptr) {
                auto* list = new QComboBox;
                list->setObjectName(control.names[0]);
                for (int v = control.minimum; v <= control.maximum; ++v) {
                    list->addItem(QString::fromUtf8(control.valueName(v)));
                }
                connect(list, &QComboBox::currentIndexChanged, this,
                        [this, bound](int index) { changed(*bound, bound->minimum + index); });
                readers_.push_back([this, list, bound] {
                    list->setCurrentIndex(bound->get(session_.state().options) - bound->minimum);
                });
                form_->addRow(caption + ':', list);
                break;
            }
            auto* row = new QWidget;
            auto* layout = new QHBoxLayout(row);
            layout->setContentsMargins(0, 0, 0, 0);
            auto* slider = new QSlider(Qt::Horizontal, row);
            slider->setObjectName(control.names[0]);
            slider->setRange(control.minimum, control.maximum);
            auto* number = new QLabel(row);
            number->setMinimumWidth(
                number->fontMetrics().horizontalAdvance(QStringLiteral("-8888")));
            number->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
            layout->addWidget(slider, 1);
            layout->addWidget(number);
            connect(slider, &QSlider::valueChanged, this, [this, bound, number](int value) {
                number->setNum(value);
                changed(*bound, value);
            });
            readers_.push_back([this, slider, number, bound] {
                const int value = bound->get(session_.state().options);
                slider->setValue(value);
                number->setNum(value);
            });
            form_->addRow(caption + ':', row);
            break;
        }
    }
}

void BrushControlPanel::showModel() {
    showing_ = true;
    for (const auto& read : readers_) {
        read();
    }
    showing_ = false;
}

BrushOptions::BrushOptions(PaintSession& session, QWidget* parent)
    : BrushControlPanel("BrushOptions", tr("Brush"), session, parent) {
    preview_ = new BrushPreview(session, this);
    auto* top = new QWidget;
    auto* layout = new QHBoxLayout(top);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(preview_);
    auto* types = new QWidget;
    auto* typeLayout = new QVBoxLayout(types);
    typeLayout->setContentsMargins(0, 0, 0, 0);
    auto* group = new QButtonGroup(this);
    const std::pair<const char*, const char*> kTypes[] = {
        {"kq_button5", "Smooth"}, {"kq_button3", "Dabs"}, {"kq_button4", "Image dabs"}};
    for (int type = 0; type < 3; ++type) {
        auto* button = new QToolButton(types);
        button->setObjectName(kTypes[type].first);
        button->setText(tr(kTypes[type].second));
        button->setCheckable(true);
        button->setToolButtonStyle(Qt::ToolButtonTextOnly);
        group->addButton(button, type);
        typeLayout->addWidget(button);
        typeButtons_.push_back(button);
        connect(button, &QToolButton::toggled, this, [this, type](bool on) {
            if (on && static_cast<int>(this->session().brushType()) != type) {
                this->session().setBrushType(type);
            }
        });
    }
    layout->addWidget(types);
    layout->addStretch();
    form()->insertRow(0, top);
    showModel();
}

void BrushOptions::showModel() {
    BrushControlPanel::showModel();
    const int type = static_cast<int>(session().brushType());
    for (std::size_t i = 0; i < typeButtons_.size(); ++i) {
        const QSignalBlocker block(typeButtons_[i]);
        static_cast<QToolButton*>(typeButtons_[i])->setChecked(static_cast<int>(i) == type);
    }
    preview_->update();
}

Paper_Panel::Paper_Panel(PaintSession& session, QWidget* parent)
    : BrushControlPanel("Paper_Panel", tr("Paper"), session, parent) {
    auto* papers = new QComboBox;
    papers->setObjectName("PaperList");
    for (int kind = 0; kind < kPaperKindCount; ++kind) {
        papers->addItem(tr(PaperName(static_cast<PaperKind>(kind))));
    }
    papers->setCurrentIndex(static_cast<int>(session.paper()));
    connect(papers, &QComboBox::currentIndexChanged, this,
            [this](int index) { this->session().choosePaper(static_cast<PaperKind>(index)); });
    form()->insertRow(0, tr("Paper:"), papers);
    showModel();
}

}  // namespace wib

// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/tool_options_panel.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QFontComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QSpinBox>
#include <QStackedWidget>
#include <algorithm>

#include "core/workspace.h"
#include "paint/paint_session.h"
#include "ui/fill_settings_form.h"

namespace wib {

namespace {

constexpr int kLargestBrush = 500;
constexpr int kLargestText = 1000;

}  // namespace

ToolOptionsPanel::ToolOptionsPanel(PaintSession& session, QWidget* parent)
    : QDockWidget(tr("Tool options"), parent), session_(session) {
    setObjectName("Tool_Options");
    pages_ = new QStackedWidget(this);
    auto* none = new QLabel(tr("This tool has no options."), pages_);
    none->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    pageIndex_[""] = pages_->addWidget(none);

    addBrushSize(page("BrushOptions"));

    QFormLayout* selection = page("SelectionOptions");
    addMode(selection);
    addFeather(selection);
    addCheck(selection, tr("Anti-aliased"), &ToolOptions::antialias);

    QFormLayout* wand = page("WandOptions");
    addMode(wand);
    addSpin(wand, tr("Tolerance"), &ToolOptions::tolerance, 0, 255);
    addCheck(wand, tr("Contiguous"), &ToolOptions::contiguous);

    QFormLayout* fill = page("FillOptions");
    addSpin(fill, tr("Tolerance"), &ToolOptions::tolerance, 0, 255);
    addCheck(fill, tr("Contiguous"), &ToolOptions::contiguous);
    addCheck(fill, tr("8-connected"), &ToolOptions::eightConnected);
    // The same settings as the "Fill settings" panel; it shows itself again
    // whenever the paint options change.
    fill->addRow(new FillSettingsForm(session_.workspace(), fill->parentWidget()));

    QFormLayout* gradient = page("GradientOptions");
    addChoice(gradient, tr("Shape"), &ToolOptions::gradientShape,
              {tr("Linear"), tr("Radial"), tr("Conical"), tr("Diamond"), tr("Reflected")},
              {0, 1, 2, 3, 4});
    addChoice(gradient, tr("Dither"), &ToolOptions::gradientDither,
              {tr("None"), tr("Ordered"), tr("Random")}, {0, 1, 2});

    QFormLayout* shape = page("ShapeOptions");
    addCheck(shape, tr("Filled"), &ToolOptions::shapeFilled);
    addBrushSize(shape);

    QFormLayout* picker = page("EyedropperOptions");
    addChoice(picker, tr("Sample"), &ToolOptions::pickerSize,
              {tr("Point"), tr("3 x 3 average"), tr("5 x 5 average")}, {1, 3, 5});
    addCheck(picker, tr("Sample all layers"), &ToolOptions::pickerComposite);

    addChoice(page("TransformOptions"), tr("Sampling"), &ToolOptions::sampling,
              {tr("Bilinear"), tr("Bicubic")}, {0, 1});

    QFormLayout* text = page("TextOptions");
    addFont(text);
    addSpin(text, tr("Size"), &ToolOptions::textSize, 1, kLargestText);
    addCheck(text, tr("Anti-aliased"), &ToolOptions::textAntialias);

    QFormLayout* byColour = page("ColourSelectOptions");
    addMode(byColour);
    addSpin(byColour, tr("Tolerance"), &ToolOptions::tolerance, 0, 255);

    // Only the page shown asks for room, and it scrolls when the side is
    // short: the tallest page does not set the height the whole side needs.
    const auto fitToShown = [this](int shown) {
        for (int i = 0; i < pages_->count(); ++i) {
            const auto policy = i == shown ? QSizePolicy::Preferred : QSizePolicy::Ignored;
            pages_->widget(i)->setSizePolicy(policy, policy);
        }
        pages_->adjustSize();
    };
    connect(pages_, &QStackedWidget::currentChanged, this, fitToShown);
    fitToShown(pages_->currentIndex());
    auto* scroll = new QScrollArea(this);
    scroll->setWidget(pages_);
    scroll->setWidgetResizable(true);
    scroll->setFrameShape(QFrame::NoFrame);
    setWidget(scroll);
    showModel();
}

ToolOptions& ToolOptionsPanel::options() {
    return session_.state().toolOptions;
}

void ToolOptionsPanel::changed() {
    session_.workspace().events.paintOptionsChanged.notify();
}

QFormLayout* ToolOptionsPanel::page(const char* name) {
    auto* body = new QWidget(pages_);
    body->setObjectName(name);
    auto* form = new QFormLayout(body);
    form->setContentsMargins(6, 6, 6, 6);
    pageIndex_[name] = pages_->addWidget(body);
    forms_[name] = form;
    return form;
}

void ToolOptionsPanel::addBrushSize(QFormLayout* form) {
    auto* size = new QSpinBox(form->parentWidget());
    size->setObjectName("BrushSize");
    size->setRange(1, kLargestBrush);
    form->addRow(tr("Brush size"), size);
    connect(size, &QSpinBox::valueChanged, this, [this](int value) {
        if (!showing_) {
            session_.state().options.brushSize = value;
            session_.optionsChanged();
        }
    });
    show_.push_back([this, size] { size->setValue(session_.state().options.brushSize); });
}

void ToolOptionsPanel::addCheck(QFormLayout* form, const QString& label,
                                bool ToolOptions::*option) {
    auto* box = new QCheckBox(label, form->parentWidget());
    form->addRow(box);
    connect(box, &QCheckBox::toggled, this, [this, option](bool on) {
        if (!showing_) {
            options().*option = on;
            changed();
        }
    });
    show_.push_back([this, box, option] { box->setChecked(options().*option); });
}

void ToolOptionsPanel::addSpin(QFormLayout* form, const QString& label, int ToolOptions::*option,
                               int low, int high) {
    auto* spin = new QSpinBox(form->parentWidget());
    spin->setRange(low, high);
    form->addRow(label, spin);
    connect(spin, &QSpinBox::valueChanged, this, [this, option](int value) {
        if (!showing_) {
            options().*option = value;
            changed();
        }
    });
    show_.push_back([this, spin, option] { spin->setValue(options().*option); });
}

void ToolOptionsPanel::addFeather(QFormLayout* form) {
    auto* spin = new QDoubleSpinBox(form->parentWidget());
    spin->setRange(0, 500);
    spin->setDecimals(1);
    form->addRow(tr("Feather"), spin);
    connect(spin, &QDoubleSpinBox::valueChanged, this, [this](double value) {
        if (!showing_) {
            options().feather = value;
            changed();
        }
    });
    show_.push_back([this, spin] { spin->setValue(options().feather); });
}

void ToolOptionsPanel::addChoice(QFormLayout* form, const QString& label, int ToolOptions::*option,
                                 const QStringList& captions, std::vector<int> values) {
    auto* list = new QComboBox(form->parentWidget());
    list->addItems(captions);
    form->addRow(label, list);
    connect(list, &QComboBox::currentIndexChanged, this, [this, option, values](int index) {
        if (!showing_ && index >= 0) {
            options().*option = values[static_cast<std::size_t>(index)];
            changed();
        }
    });
    show_.push_back([this, list, option, values] {
        const auto at = std::find(values.begin(), values.end(), options().*option);
        list->setCurrentIndex(at == values.end() ? 0 : static_cast<int>(at - values.begin()));
    });
}

void ToolOptionsPanel::addFont(QFormLayout* form) {
    auto* fonts = new QFontComboBox(form->parentWidget());
    form->addRow(tr("Font"), fonts);
    connect(fonts, &QFontComboBox::currentFontChanged, this, [this](const QFont& font) {
        if (!showing_) {
            options().textFont = font.family().toStdString();
            changed();
        }
    });
    show_.push_back([this, fonts] {
        fonts->setCurrentFont(QFont(QString::fromStdString(options().textFont)));
    });
}

void ToolOptionsPanel::addButton(const char* page, const QString& caption,
                                 std::function<void()> pressed) {
    QFormLayout* form = forms_.at(page);
    auto* button = new QPushButton(caption, form->parentWidget());
    form->addRow(button);
    connect(button, &QPushButton::clicked, this, std::move(pressed));
}

void ToolOptionsPanel::addMode(QFormLayout* form) {
    addChoice(form, tr("Mode"), &ToolOptions::selectionMode,
              {tr("Replace"), tr("Add (Shift)"), tr("Subtract (Alt)"), tr("Intersect (Shift+Alt)")},
              {0, 1, 2, 3});
}

void ToolOptionsPanel::showModel() {
    const auto found = pageIndex_.find(session_.tools().active().optionsPanel());
    pages_->setCurrentIndex(found != pageIndex_.end() ? found->second : pageIndex_[""]);
    showing_ = true;
    for (const auto& show : show_) {
        show();
    }
    showing_ = false;
}

}  // namespace wib

// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/canvas_size.h"

#include <QButtonGroup>
#include <QColorDialog>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QMenu>
#include <QPushButton>
#include <QSpinBox>
#include <QToolButton>
#include <QVBoxLayout>
#include <QWidgetAction>

#include "core/document_limits.h"
#include "core/general_table.h"
#include "ui/qt_colour.h"
#include "ui/swatch_grid.h"

namespace wib {

namespace {

QSpinBox* SizeField(const char* name, QWidget* parent) {
    auto* field = new QSpinBox(parent);
    field->setObjectName(name);
    field->setRange(1, kMaxDocumentSide);
    field->setSuffix(QStringLiteral(" px"));
    return field;
}

// The arrows drawn on the anchor buttons: where the old image sits.
constexpr const char* kAnchorGlyphs[9] = {"\u2196", "\u2191", "\u2197", "\u2190", "\u25CF",
                                          "\u2192", "\u2199", "\u2193", "\u2198"};

std::vector<QColor> PaletteColours(const GeneralTable& table, int palette) {
    std::vector<QColor> colours;
    for (int i = 0; i < GeneralTable::kColoursPerPalette; ++i) {
        const auto [r, g, b] = table.colour(palette, i);
        colours.emplace_back(r, g, b);
    }
    return colours;
}

}  // namespace

CanvasSize::CanvasSize(Purpose purpose, const std::filesystem::path& presetFile,
                       const GeneralTable* swatches, QWidget* parent)
    : QDialog(parent), purpose_(purpose), presets_(ReadSizePresets(presetFile)) {
    setObjectName("CanvasSize");
    setWindowTitle(purpose == Purpose::NewDocument ? tr("New image") : tr("Canvas size"));

    auto* form = new QFormLayout;
    presetList_ = new QComboBox(this);
    presetList_->setObjectName("PresetList");
    presetList_->addItem(tr("Custom"));
    for (const SizePreset& preset : presets_) {
        presetList_->addItem(QString::fromStdString(preset.label));
    }
    form->addRow(tr("&Preset:"), presetList_);
    width_ = SizeField("WidthText", this);
    height_ = SizeField("HeightText", this);
    form->addRow(tr("&Width:"), width_);
    form->addRow(tr("&Height:"), height_);
    connect(presetList_, &QComboBox::currentIndexChanged, this, &CanvasSize::presetChosen);

    if (purpose == Purpose::ChangeCanvas) {
        auto* grid = new QGridLayout;
        grid->setSpacing(2);
        anchors_ = new QButtonGroup(this);
        for (int anchor = 0; anchor < 9; ++anchor) {
            auto* button = new QToolButton(this);
            button->setObjectName(QStringLiteral("Anchor%1").arg(anchor));
            button->setText(QString::fromUtf8(kAnchorGlyphs[anchor]));
            button->setCheckable(true);
            button->setFixedSize(28, 28);
            anchors_->addButton(button, anchor);
            grid->addWidget(button, anchor / 3, anchor % 3);
        }
        anchors_->button(4)->setChecked(true);
        auto* anchorBox = new QWidget(this);
        anchorBox->setLayout(grid);
        form->addRow(tr("&Anchor:"), anchorBox);

        fill_ = new QToolButton(this);
        fill_->setObjectName("FillColor");
        fill_->setPopupMode(QToolButton::InstantPopup);
        auto* menu = new QMenu(fill_);
        if (swatches != nullptr) {
            auto* grid = new SwatchGrid(PaletteColours(*swatches, 0), 28, menu);
            auto* action = new QWidgetAction(menu);
            action->setDefaultWidget(grid);
            menu->addAction(action);
            connect(grid, &SwatchGrid::colourPicked, this, [this, menu](const QColor& colour) {
                setFill(colour);
                menu->close();
            });
        }
        menu->addAction(tr("Other colour..."), this, [this] {
            const QColor colour = QColorDialog::getColor(fillColour_, this, tr("Fill colour"));
            if (colour.isValid()) {
                setFill(colour);
            }
        });
        fill_->setMenu(menu);
        setFill(Qt::white);
        form->addRow(tr("&Fill new area:"), fill_);
    }

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    buttons->button(QDialogButtonBox::Ok)->setObjectName("OKButton");
    buttons->button(QDialogButtonBox::Cancel)->setObjectName("CancelButton");
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(buttons);
}

void CanvasSize::presetChosen(int index) {
    if (index >= 1 && index <= static_cast<int>(presets_.size())) {
        const SizePreset& preset = presets_[static_cast<std::size_t>(index - 1)];
        width_->setValue(preset.width);
        height_->setValue(preset.height);
    }
}

void CanvasSize::setFill(const QColor& colour) {
    fillColour_ = colour;
    QPixmap swatch(32, 16);
    swatch.fill(colour);
    fill_->setIcon(QIcon(swatch));
    fill_->setIconSize(swatch.size());
    fill_->setText(colour.name());
    fill_->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
}

void CanvasSize::setValues(const std::map<std::string, ParamValue>& values) {
    auto integer = [&](const char* name, long long fallback) {
        const auto found = values.find(name);
        if (found == values.end() || !std::holds_alternative<long long>(found->second)) {
            return fallback;
        }
        return std::get<long long>(found->second);
    };
    width_->setValue(static_cast<int>(integer("width", width_->value())));
    height_->setValue(static_cast<int>(integer("height", height_->value())));
    if (purpose_ == Purpose::ChangeCanvas) {
        if (auto* button = anchors_->button(static_cast<int>(integer("anchor", 4)))) {
            button->setChecked(true);
        }
        const long long fill = integer("fill", 0xFFFFFF);
        setFill(PackedToQColor(fill));
    }
}

std::map<std::string, ParamValue> CanvasSize::values() const {
    std::map<std::string, ParamValue> result{{"width", static_cast<long long>(width_->value())},
                                             {"height", static_cast<long long>(height_->value())}};
    if (purpose_ == Purpose::ChangeCanvas) {
        result["anchor"] = static_cast<long long>(anchors_->checkedId());
        result["fill"] = QColorToPacked(fillColour_);
    }
    return result;
}

}  // namespace wib

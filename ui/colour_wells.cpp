// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/colour_wells.h"

#include <QColorDialog>
#include <QGridLayout>
#include <QToolButton>
#include <QVBoxLayout>

#include "core/general_table.h"
#include "core/workspace.h"
#include "paint/paint_session.h"
#include "ui/qt_colour.h"
#include "ui/swatch_grid.h"

namespace wib {

namespace {

QToolButton* Well(const char* name, const QString& tip, QWidget* parent) {
    auto* well = new QToolButton(parent);
    well->setObjectName(name);
    well->setToolTip(tip);
    well->setFixedSize(40, 28);
    return well;
}

void Paint(QToolButton* well, const QColor& colour) {
    QPixmap swatch(32, 20);
    swatch.fill(colour);
    well->setIcon(QIcon(swatch));
    well->setIconSize(swatch.size());
}

}  // namespace

ColourWells::ColourWells(PaintSession& session, const GeneralTable* swatches, QWidget* parent)
    : QWidget(parent), session_(session) {
    setObjectName("ColourWells");
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 4, 0, 0);
    auto* wells = new QGridLayout;
    primary_ = Well("PrimaryColor", tr("Primary colour (left button)"), this);
    secondary_ = Well("SecondaryColor", tr("Secondary colour (right button, erasing)"), this);
    auto* swap = new QToolButton(this);
    swap->setObjectName("SwapColors");
    swap->setText(QStringLiteral("\u21C4"));
    swap->setToolTip(tr("Swap the colours"));
    wells->addWidget(primary_, 0, 0);
    wells->addWidget(swap, 0, 1);
    wells->addWidget(secondary_, 0, 2);
    layout->addLayout(wells);
    connect(primary_, &QToolButton::clicked, this, [this] { choose(true); });
    connect(secondary_, &QToolButton::clicked, this, [this] { choose(false); });
    connect(swap, &QToolButton::clicked, this, [this] {
        const ColourState colours = session_.workspace().colours;
        session_.setPrimaryColour(colours.secondary);
        session_.setSecondaryColour(colours.primary);
    });
    if (swatches != nullptr) {
        std::vector<QColor> colours;
        // Seven shades of each hue keep the panel narrow.
        for (int shade = 3; shade < 10; ++shade) {
            for (int hue = 0; hue < 28; hue += 2) {
                const auto [r, g, b] = swatches->colour(0, shade * 28 + hue);
                colours.emplace_back(r, g, b);
            }
        }
        auto* grid = new SwatchGrid(colours, 14, this);
        connect(grid, &SwatchGrid::colourPicked, this, [this](const QColor& c) { set(true, c); });
        connect(grid, &SwatchGrid::alternateColourPicked, this,
                [this](const QColor& c) { set(false, c); });
        layout->addWidget(grid);
    }
    showColours();
}

void ColourWells::showColours() {
    const ColourState& colours = session_.workspace().colours;
    Paint(primary_, ToQColor(colours.primary));
    Paint(secondary_, ToQColor(colours.secondary));
}

void ColourWells::set(bool primary, const QColor& colour) {
    primary ? session_.setPrimaryColour(FromQColor(colour))
            : session_.setSecondaryColour(FromQColor(colour));
}

void ColourWells::choose(bool primary) {
    const ColourState& colours = session_.workspace().colours;
    const QColor current = ToQColor(primary ? colours.primary : colours.secondary);
    const QColor picked = QColorDialog::getColor(
        current, this, primary ? tr("Primary colour") : tr("Secondary colour"));
    if (picked.isValid()) {
        set(primary, picked);
    }
}

}  // namespace wib

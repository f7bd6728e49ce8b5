// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/fill_settings_form.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDockWidget>
#include <QFormLayout>
#include <QVBoxLayout>

#include "core/workspace.h"

namespace wib {

FillSettingsForm::FillSettingsForm(Workspace& workspace, QWidget* parent)
    : QWidget(parent), workspace_(workspace) {
    auto* form = new QFormLayout(this);
    form->setContentsMargins(0, 0, 0, 0);
    // The lists' entries follow the order of the settings' values.
    source_ = new QComboBox(this);
    source_->setObjectName("FillSource");
    source_->addItems({tr("Primary colour"), tr("Secondary colour"), tr("Pattern (brush image)"),
                       tr("Gradient")});
    form->addRow(tr("Fill with"), source_);
    sample_ = new QComboBox(this);
    sample_->setObjectName("FillSample");
    sample_->addItems({tr("Current layer"), tr("All visible layers")});
    form->addRow(tr("Sample"), sample_);
    gradient_ = new QComboBox(this);
    gradient_->setObjectName("FillGradient");
    gradient_->addItems({tr("Across the region"), tr("As last drawn")});
    form->addRow(tr("Gradient"), gradient_);
    antialias_ = new QCheckBox(tr("Anti-aliased edge"), this);
    antialias_->setObjectName("FillAntialias");
    form->addRow(antialias_);

    for (QComboBox* list : {source_, sample_, gradient_}) {
        connect(list, &QComboBox::currentIndexChanged, this, [this] { changed(); });
    }
    connect(antialias_, &QCheckBox::toggled, this, [this] { changed(); });
    subscription_ = workspace_.events.paintOptionsChanged.subscribe([this] { showModel(); });
    showModel();
}

void FillSettingsForm::showModel() {
    const FillSettings& fill = workspace_.fill;
    showing_ = true;
    source_->setCurrentIndex(static_cast<int>(fill.source));
    sample_->setCurrentIndex(static_cast<int>(fill.sample));
    gradient_->setCurrentIndex(static_cast<int>(fill.gradient));
    gradient_->setEnabled(fill.source == FillSource::Gradient);
    antialias_->setChecked(fill.antialias);
    showing_ = false;
}

void FillSettingsForm::changed() {
    if (showing_) {
        return;
    }
    FillSettings& fill = workspace_.fill;
    fill.source = static_cast<FillSource>(source_->currentIndex());
    fill.sample = static_cast<FillSample>(sample_->currentIndex());
    fill.gradient = static_cast<FillGradientPlacement>(gradient_->currentIndex());
    fill.antialias = antialias_->isChecked();
    workspace_.events.paintOptionsChanged.notify();
}

QDockWidget* MakeFillSettingsPanel(Workspace& workspace, QWidget* parent) {
    auto* dock = new QDockWidget(QObject::tr("Fill settings"), parent);
    dock->setObjectName("Fill_Settings");
    auto* body = new QWidget(dock);
    auto* layout = new QVBoxLayout(body);
    layout->setContentsMargins(6, 6, 6, 6);
    layout->addWidget(new FillSettingsForm(workspace, body));
    layout->addStretch(1);
    dock->setWidget(body);
    return dock;
}

}  // namespace wib

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

#include "core/observer_list.h"

class QCheckBox;
class QComboBox;
class QDockWidget;

namespace wib {

class Workspace;

// The fill's settings as fields: what a fill lays, which pixels it samples,
// its anti-aliased edge and where a gradient fill's ends lie. The "Fill
// settings" panel and the fill tool's options page each hold one; a change in
// either is told to both through the paint options' change.
class FillSettingsForm : public QWidget {
    Q_OBJECT
  public:
    explicit FillSettingsForm(Workspace& workspace, QWidget* parent = nullptr);
    // Shows the workspace's settings in the fields.
    void showModel();

  private:
    void changed();

    Workspace& workspace_;
    QComboBox* source_;
    QComboBox* sample_;
    QCheckBox* antialias_;
    QComboBox* gradient_;
    bool showing_ = false;  // true while fields are set from the model
    Subscription subscription_;
};

// The docked "Fill settings" panel (object name Fill_Settings), holding one
// form, so that the window remembers it with the other panels.
QDockWidget* MakeFillSettingsPanel(Workspace& workspace, QWidget* parent);

}  // namespace wib

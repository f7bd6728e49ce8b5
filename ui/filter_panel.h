// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>
#include <map>
#include <string>

#include "core/commands.h"

class QCheckBox;
class QVBoxLayout;

namespace wib {

class Form1;
class ParamFields;
class PreviewWorker;
class Workspace;
struct FilterPreview;

// Where a panel shows its preview: the canvas, and the workspace whose image
// it shows.
struct PreviewCanvas {
    Workspace& workspace;
    Form1& canvas;
};

// The option panel of a filter: the fields of its parameters, "Preview",
// "Reset", OK and Cancel. Opens on the values remembered from the last OK
// (see RecallPanelValues) and remembers the values it is accepted with. While
// Preview is on, the canvas shows the filter's result on the part of the
// image it shows, recomputed off the interface thread after every change.
// Closing the panel, either way, takes the preview away; the image itself is
// never touched by the panel.
class FilterPanel : public QDialog {
    Q_OBJECT
  public:
    FilterPanel(const CommandSpec& command, std::map<std::string, ParamValue> start,
                PreviewCanvas canvas, QWidget* parent = nullptr);
    ~FilterPanel() override;

    std::map<std::string, ParamValue> values() const;
    ParamFields& fields() { return *fields_; }
    // Puts a view of the panel's own (a histogram, a curve) above the fields.
    void addView(QWidget* view);

    void done(int result) override;

  private:
    void showPreview();

    CommandSpec command_;
    PreviewCanvas canvas_;
    const FilterPreview* preview_;  // within command_; null when it has none
    QVBoxLayout* layout_;
    ParamFields* fields_;
    QCheckBox* previewBox_;
    PreviewWorker* worker_;
};

// The dialog that asks through a FilterPanel; `decorate` adds a hand-made
// panel's views to it.
CommandDialog FilterPanelDialog(PreviewCanvas canvas, QWidget* parent,
                                std::function<void(FilterPanel& panel)> decorate = nullptr);

}  // namespace wib

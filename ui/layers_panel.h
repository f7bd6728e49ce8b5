// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDockWidget>
#include <map>
#include <string>
#include <vector>

#include "core/commands.h"
#include "core/observer_list.h"

class QComboBox;
class QFrame;
class QLabel;
class QScrollArea;
class QSlider;
class QTimer;
class QToolButton;

namespace wib {

class LayerListRow;
class Workspace;

// The docked list of layers, top layer first, with the current layer's mode
// and opacity above it and the layer commands under it. It shows the layer
// stack and runs the layer commands for every change it is asked for, so
// that each is one undo step and scripts see the same changes.
class Layers_panel : public QDockWidget {
    Q_OBJECT
  public:
    Layers_panel(Workspace& workspace, const CommandRegistry& commands, QWidget* parent);

    // The rows and controls show the layer stack again; thumbnails follow soon.
    void showLayers();
    // The pixels changed: the thumbnails are made again once painting pauses.
    void thumbnailsStale();
    // Makes every thumbnail now.
    void makeThumbnails();

    int rowCount() const { return static_cast<int>(rows_.size()); }
    // The row showing layer `index` (0 the bottom); null outside the list.
    LayerListRow* rowOfLayer(int index) const;
    // Dropping row `from` of the list (0 the top) into the gap before row
    // `gap` (rowCount for the end) moves its layer there.
    void dropRow(int from, int gap);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void addRow();
    int layerOfRow(const LayerListRow* row) const;
    int gapAt(int y) const;
    void showDropMark(int gap);
    // Runs a command with these values; a refusal has told the user already.
    void run(const std::string& id, const std::map<std::string, ParamValue>& values);
    void runAsking(const std::string& id);
    void setCurrentProperty(const std::string& name, ParamValue value);

    Workspace& workspace_;
    const CommandRegistry& commands_;
    QComboBox* mode_;
    QSlider* opacity_;
    QLabel* opacityText_;
    QScrollArea* scroll_;
    QWidget* list_;
    QFrame* dropMark_;
    std::vector<LayerListRow*> rows_;
    std::vector<std::pair<QToolButton*, std::string>> buttons_;
    QTimer* thumbnailTimer_;
    Subscription layersSubscription_;
    // The row a press landed on and where, while the button is down.
    LayerListRow* pressed_ = nullptr;
    int pressY_ = 0;
    bool dragging_ = false;
};

}  // namespace wib

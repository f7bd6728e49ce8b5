// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDockWidget>
#include <functional>
#include <string>
#include <vector>

#include "paint/tool.h"

class QGridLayout;
class QToolButton;

namespace wib {

// The tool box: a button with a picture for each tool, the active one held
// down, in two columns or one; its tooltip names the tool's key.
class Tool_Panel : public QDockWidget {
    Q_OBJECT
  public:
    // `choose` runs the command that makes a tool active ("tool.brush").
    explicit Tool_Panel(std::function<void(const std::string&)> choose, QWidget* parent = nullptr);
    void setSingleColumn(bool single);
    // Puts a widget under the buttons (the colour wells).
    void addBelow(QWidget* widget);
    // Holds down the button of `tool` and lets the others up.
    void showActiveTool(ToolId tool);
    QToolButton* button(ToolId tool) const;

  private:
    void layoutButtons();

    std::vector<std::pair<ToolId, QToolButton*>> buttons_;
    std::vector<QWidget*> below_;
    QGridLayout* grid_;
    bool single_ = false;
};

}  // namespace wib

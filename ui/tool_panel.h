// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDockWidget>
#include <functional>
#include <string>
#include <vector>

class QGridLayout;

namespace wib {

class CommandRegistry;

// The tool panel: a button for each everyday command, in one or two columns.
class Tool_Panel : public QDockWidget {
    Q_OBJECT
  public:
    Tool_Panel(const CommandRegistry& commands, std::function<void(const std::string&)> run,
               QWidget* parent = nullptr);
    void setSingleColumn(bool single);
    // Puts a widget under the buttons (the colour wells).
    void addBelow(QWidget* widget);

  private:
    void layoutButtons();

    std::vector<QWidget*> buttons_;
    std::vector<QWidget*> below_;
    QGridLayout* grid_;
    bool single_ = false;
};

}  // namespace wib

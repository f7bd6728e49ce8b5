// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QTimer>

#include <memory>

class QWidget;

namespace companion {

// The tie of a companion window to the program: it connects, so that the
// program counts it among its running plug-ins, and quits the application
// when the connection closes (the program ended or went away). Make it after
// the QApplication.
class ProgramLink {
  public:
    ProgramLink();  // throws when the program cannot be reached

  private:
    struct State;
    std::shared_ptr<State> state_;
    QTimer poll_;
};

// Shows the window as the style the program started the plug-in with asks:
// with 4 it does not take the focus from the program.
void ShowWithProgramsStyle(QWidget& window);

}  // namespace companion

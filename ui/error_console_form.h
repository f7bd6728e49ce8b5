// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDockWidget>
#include <string>
#include <vector>

#include "core/host/log.h"

class QPlainTextEdit;

namespace wib {

// The log window: start-up steps, plug-in errors and notices, one line each.
class ErrorConsoleForm : public QDockWidget {
    Q_OBJECT
  public:
    explicit ErrorConsoleForm(QWidget* parent = nullptr);
    void append(const std::string& text);
    QStringList lines() const;

  private:
    QPlainTextEdit* text_;
};

// The program's log: every line to standard error, and to the log window once
// it exists (lines from before are shown when it arrives).
class ProgramLog : public Log {
  public:
    void line(const std::string& text) override;
    void attach(ErrorConsoleForm* window);

  private:
    std::vector<std::string> early_;
    ErrorConsoleForm* window_ = nullptr;
};

}  // namespace wib

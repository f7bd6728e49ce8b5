// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QProcess>

#include "core/host/process_runner.h"

namespace wib {

// A Qt process with its standard input and output as pipes, driven without an
// event loop: every call waits on the process itself.
class QtPipedProcess : public PipedProcess {
  public:
    // Starts it; `started()` then says whether that worked.
    QtPipedProcess(const QString& program, const QStringList& arguments);
    ~QtPipedProcess() override;
    bool started() const { return started_; }

    bool write(const std::uint8_t* data, std::size_t size) override;
    std::size_t read(std::uint8_t* data, std::size_t size) override;
    ProcessEnd finish() override;
    void kill() override;

  private:
    QProcess process_;
    QByteArray errors_;
    bool started_ = false;
};

}  // namespace wib

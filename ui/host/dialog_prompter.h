// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPointer>
#include <QProgressDialog>

#include "core/host/prompter.h"

class QWidget;

namespace wib {

// Message boxes, the two-button question box, value and file requests and
// the status window as Qt dialogs over the main frame.
class DialogPrompter : public Prompter {
  public:
    void setParent(QWidget* parent) { parent_ = parent; }

    void messageBox(const std::string& text, const std::string& title) override;
    void warningBox(const std::string& text, const std::string& title) override;
    int questionBox(const std::string& text, const std::string& title) override;
    int choiceBox(const std::string& text, const std::string& title, const std::string& first,
                  const std::string& second) override;
    int threeChoiceBox(const std::string& text, const std::string& title, const std::string& first,
                       const std::string& second, const std::string& third) override;
    double valueBox(const std::string& prompt, double initial, double minimum,
                    double maximum) override;
    std::string requestFileOpen(const std::string& title, const std::string& filter) override;
    std::string requestFileSave(const std::string& title, const std::string& filter) override;
    std::string directoryBrowse(const std::string& title) override;
    void statusOpen(const std::string& caption) override;
    void status(const std::string& text) override;
    void progress(int percent) override;
    void statusClose() override;
    void allowCancel() override;
    bool cancelRequested() override;

  private:
    QWidget* parent_ = nullptr;
    QPointer<QProgressDialog> status_;
    bool cancelled_ = false;
};

}  // namespace wib

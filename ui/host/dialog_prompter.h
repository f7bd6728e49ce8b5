#pragma once

#include <QPointer>
#include <QProgressDialog>

#include "core/host/prompter.h"

class QWidget;

namespace wib {

// Message boxes, the two-button question box and the status window as Qt
// dialogs over the main frame.
class DialogPrompter : public Prompter {
  public:
    void setParent(QWidget* parent) { parent_ = parent; }

    void message(const std::string& text) override;
    int question(const std::string& text) override;
    void statusOpen(const std::string& caption) override;
    void status(const std::string& text) override;
    void progress(int percent) override;
    void statusClose() override;

  private:
    QWidget* parent_ = nullptr;
    QPointer<QProgressDialog> status_;
};

}  // namespace wib

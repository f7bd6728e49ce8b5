#include "ui/host/dialog_prompter.h"

#include <QApplication>
#include <QMessageBox>

namespace wib {

void DialogPrompter::message(const std::string& text) {
    QMessageBox::information(parent_, QStringLiteral("Wibbleton"), QString::fromStdString(text));
}

int DialogPrompter::question(const std::string& text) {
    const auto answer =
        QMessageBox::question(parent_, QStringLiteral("Wibbleton"), QString::fromStdString(text),
                              QMessageBox::Yes | QMessageBox::No, QMessageBox::No);
    return answer == QMessageBox::Yes ? 1 : 2;
}

void DialogPrompter::statusOpen(const std::string& caption) {
    if (!status_) {
        status_ = new QProgressDialog(parent_);
        status_->setCancelButton(nullptr);
        status_->setRange(0, 100);
        status_->setMinimumDuration(0);
        status_->setWindowModality(Qt::NonModal);
    }
    status_->setWindowTitle(QString::fromStdString(caption));
    status_->setValue(0);
    status_->show();
    QApplication::processEvents();
}

void DialogPrompter::status(const std::string& text) {
    if (status_) {
        status_->setLabelText(QString::fromStdString(text));
        QApplication::processEvents();
    }
}

void DialogPrompter::progress(int percent) {
    if (status_) {
        status_->setValue(std::clamp(percent, 0, 100));
    }
}

void DialogPrompter::statusClose() {
    if (status_) {
        status_->close();
        status_->deleteLater();
    }
}

}  // namespace wib

// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/host/dialog_prompter.h"

#include <QApplication>
#include <QFileDialog>
#include <QInputDialog>
#include <QMessageBox>
#include <QPushButton>

namespace wib {

void DialogPrompter::messageBox(const std::string& text, const std::string& title) {
    QMessageBox::information(parent_, QString::fromStdString(title), QString::fromStdString(text));
}

void DialogPrompter::warningBox(const std::string& text, const std::string& title) {
    QMessageBox::warning(parent_, QString::fromStdString(title), QString::fromStdString(text));
}

int DialogPrompter::questionBox(const std::string& text, const std::string& title) {
    const auto answer =
        QMessageBox::question(parent_, QString::fromStdString(title), QString::fromStdString(text),
                              QMessageBox::Yes | QMessageBox::No, QMessageBox::No);
    return answer == QMessageBox::Yes ? 1 : 2;
}

int DialogPrompter::choiceBox(const std::string& text, const std::string& title,
                              const std::string& first, const std::string& second) {
    QMessageBox box(QMessageBox::Warning, QString::fromStdString(title),
                    QString::fromStdString(text), QMessageBox::NoButton, parent_);
    QPushButton* firstButton =
        box.addButton(QString::fromStdString(first), QMessageBox::AcceptRole);
    box.addButton(QString::fromStdString(second), QMessageBox::RejectRole);
    box.setDefaultButton(firstButton);
    box.exec();
    return box.clickedButton() == firstButton ? 1 : 2;
}

int DialogPrompter::threeChoiceBox(const std::string& text, const std::string& title,
                                   const std::string& first, const std::string& second,
                                   const std::string& third) {
    QMessageBox box(QMessageBox::Question, QString::fromStdString(title),
                    QString::fromStdString(text), QMessageBox::NoButton, parent_);
    QPushButton* firstButton =
        box.addButton(QString::fromStdString(first), QMessageBox::AcceptRole);
    QPushButton* secondButton =
        box.addButton(QString::fromStdString(second), QMessageBox::DestructiveRole);
    // Esc and the window's close button answer Cancel.
    QPushButton* thirdButton =
        box.addButton(QString::fromStdString(third), QMessageBox::RejectRole);
    box.setDefaultButton(firstButton);
    box.setEscapeButton(thirdButton);
    box.exec();
    if (box.clickedButton() == firstButton) {
        return 1;
    }
    return box.clickedButton() == secondButton ? 2 : 3;
}

double DialogPrompter::valueBox(const std::string& prompt, double initial, double minimum,
                                double maximum) {
    bool ok = false;
    const double value =
        QInputDialog::getDouble(parent_, QStringLiteral("Wibbleton"),
                                QString::fromStdString(prompt), initial, minimum, maximum, 3, &ok);
    return ok ? value : initial;
}

std::string DialogPrompter::requestFileOpen(const std::string& title, const std::string& filter) {
    return QFileDialog::getOpenFileName(parent_, QString::fromStdString(title), QString(),
                                        QString::fromStdString(filter))
        .toStdString();
}

std::string DialogPrompter::requestFileSave(const std::string& title, const std::string& filter) {
    return QFileDialog::getSaveFileName(parent_, QString::fromStdString(title), QString(),
                                        QString::fromStdString(filter))
        .toStdString();
}

std::string DialogPrompter::directoryBrowse(const std::string& title) {
    return QFileDialog::getExistingDirectory(parent_, QString::fromStdString(title)).toStdString();
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
    status_->setCancelButton(nullptr);
    cancelled_ = false;
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

void DialogPrompter::allowCancel() {
    if (status_) {
        // A Cancel button; Esc in the status window presses it.
        status_->setCancelButtonText(QObject::tr("Cancel"));
        QObject::connect(status_, &QProgressDialog::canceled, status_,
                         [this] { cancelled_ = true; });
    }
}

bool DialogPrompter::cancelRequested() {
    QApplication::processEvents();
    return cancelled_ || (status_ && status_->wasCanceled());
}

void DialogPrompter::statusClose() {
    if (status_) {
        status_->close();
        status_->deleteLater();
    }
}

}  // namespace wib

// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/error_console_form.h"

#include <QPlainTextEdit>
#include <cstdio>

namespace wib {

ErrorConsoleForm::ErrorConsoleForm(QWidget* parent) : QDockWidget(tr("Log"), parent) {
    setObjectName("ErrorConsoleForm");
    text_ = new QPlainTextEdit(this);
    text_->setObjectName("Text1");
    text_->setReadOnly(true);
    text_->setMaximumBlockCount(5000);
    text_->setLineWrapMode(QPlainTextEdit::NoWrap);
    setWidget(text_);
}

void ErrorConsoleForm::append(const std::string& text) {
    text_->appendPlainText(QString::fromStdString(text));
}

QStringList ErrorConsoleForm::lines() const {
    return text_->toPlainText().split('\n');
}

void ProgramLog::line(const std::string& text) {
    std::fprintf(stderr, "%s\n", text.c_str());
    std::fflush(stderr);
    if (window_ != nullptr) {
        window_->append(text);
    } else {
        early_.push_back(text);
    }
}

void ProgramLog::attach(ErrorConsoleForm* window) {
    window_ = window;
    if (window_ != nullptr) {
        for (const std::string& text : early_) {
            window_->append(text);
        }
        early_.clear();
    }
}

}  // namespace wib

// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/param_dialog.h"

#include <QDialogButtonBox>
#include <QVBoxLayout>

#include "ui/param_fields.h"

namespace wib {

QString DialogTitle(const CommandSpec& command) {
    return QString::fromStdString(command.caption).remove('&').remove(QStringLiteral("..."));
}

ParamDialog::ParamDialog(const CommandSpec& command, const std::map<std::string, ParamValue>& start,
                         QWidget* parent)
    : QDialog(parent), fields_(new ParamFields(command, start, this)) {
    setObjectName(QString::fromStdString(command.id));
    setWindowTitle(DialogTitle(command));
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(fields_);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    layout->addWidget(buttons);
}

std::map<std::string, ParamValue> ParamDialog::values() const {
    return fields_->values();
}

}  // namespace wib

// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/targa_options.h"

#include <QButtonGroup>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace wib {

namespace {

// In the order of TargaFormatChoice 1 to 4, captions as the program has them.
constexpr const char* kChoiceCaptions[4] = {"24  bit color", "32 bit grayscale", "8 bit grayscale",
                                            "8 bit color"};

}  // namespace

TargaOptions::TargaOptions(QWidget* parent) : QDialog(parent) {
    setObjectName("TargaOptions");
    setWindowTitle(QStringLiteral("Save targa"));
    auto* layout = new QVBoxLayout(this);
    auto* label = new QLabel(
        QStringLiteral("Save a Targa\u2122 image flle with the following pixel format:"), this);
    label->setObjectName("Label1");
    layout->addWidget(label);
    auto* group = new QButtonGroup(this);
    for (int i = 0; i < 4; ++i) {
        choices_[i] = new QRadioButton(QString::fromLatin1(kChoiceCaptions[i]), this);
        choices_[i]->setObjectName(QStringLiteral("Option%1").arg(i + 1));
        group->addButton(choices_[i], i + 1);
        layout->addWidget(choices_[i]);
    }
    auto* buttons = new QDialogButtonBox(this);
    QPushButton* ok = buttons->addButton(QStringLiteral("OK"), QDialogButtonBox::AcceptRole);
    ok->setObjectName("OKButton");
    ok->setDefault(true);
    buttons->addButton(QStringLiteral("Cancel"), QDialogButtonBox::RejectRole)
        ->setObjectName("CancelButton");
    layout->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(this, &QDialog::finished, this, [this, group](int result) {
        TargaSaveCancelled = result == QDialog::Accepted ? 0 : 1;
        if (result == QDialog::Accepted) {
            TargaFormatChoice = static_cast<std::uint8_t>(group->checkedId());
        }
    });
}

bool TargaOptions::ask() {
    choices_[1]->setChecked(true);
    return exec() == QDialog::Accepted;
}

}  // namespace wib

// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/swap_image_view.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QPixmap>
#include <QPushButton>
#include <QVBoxLayout>

#include "core/document.h"
#include "ui/plane_image.h"

namespace wib {

namespace {
constexpr int kLargestSide = 512;
}

SwapImageView::SwapImageView(const Document& document, QWidget* parent)
    : QDialog(parent), document_(document), picture_(new QLabel(this)) {
    setWindowTitle(tr("Swap image"));
    picture_->setAlignment(Qt::AlignCenter);
    picture_->setMinimumSize(64, 64);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    QPushButton* again = buttons->addButton(tr("&Refresh"), QDialogButtonBox::ActionRole);
    connect(again, &QPushButton::clicked, this, &SwapImageView::refresh);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::hide);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(picture_, 1);
    layout->addWidget(buttons);
}

void SwapImageView::refresh() {
    QImage image;
    PlanesToImage(document_.SwapR, document_.SwapG, document_.SwapB,
                  QRect(0, 0, document_.width, document_.height), image);
    if (image.isNull()) {
        picture_->setText(tr("No image"));
        return;
    }
    if (image.width() > kLargestSide || image.height() > kLargestSide) {
        image =
            image.scaled(kLargestSide, kLargestSide, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    }
    picture_->setPixmap(QPixmap::fromImage(image));
}

}  // namespace wib

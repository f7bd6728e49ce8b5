// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>

class QLabel;

namespace wib {

struct Document;

// Image > Swap image > Show swap image: the swap planes as a picture, scaled
// down to fit the window, drawn anew by Refresh and each time it is shown
// again.
class SwapImageView : public QDialog {
    Q_OBJECT
  public:
    explicit SwapImageView(const Document& document, QWidget* parent = nullptr);
    void refresh();

  private:
    const Document& document_;
    QLabel* picture_;
};

}  // namespace wib

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>
#include <cstdint>

class QRadioButton;

namespace wib {

// "Save targa": the pixel format of a Targa about to be saved. The choice
// stays in `TargaFormatChoice` (1 to 4; the 32-bit choice is selected each
// time the panel opens) and `TargaSaveCancelled` says whether Cancel ended it.
class TargaOptions : public QDialog {
    Q_OBJECT
  public:
    explicit TargaOptions(QWidget* parent = nullptr);

    // Shows the panel modally; false after Cancel.
    bool ask();

    std::uint8_t TargaFormatChoice = 2;
    std::uint8_t TargaSaveCancelled = 0;

  private:
    QRadioButton* choices_[4];
};

}  // namespace wib

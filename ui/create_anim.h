// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>
#include <map>
#include <string>

#include "core/commands.h"

class QComboBox;
class QLabel;
class QLineEdit;
class QSpinBox;

namespace wib {

class Workspace;

// The creation panel of Animation > Create animation: frame count and rate,
// the length and memory they come to, the memory free, and what the frames
// start as, with the secondary colour that "Clear to secondary color" uses.
// It refuses fewer than 2 frames and stays open.
class Create_Anim : public QDialog {
    Q_OBJECT
  public:
    explicit Create_Anim(Workspace& workspace, QWidget* parent = nullptr);

    // Starts from the command's values (frames, rate, contents, colour) and
    // gives back what the user chose.
    void setValues(const std::map<std::string, ParamValue>& values);
    std::map<std::string, ParamValue> values() const;

    void accept() override;

  private:
    void updateFigures();

    Workspace& workspace_;
    QSpinBox* frames_;
    QLineEdit* rate_;
    QLabel* length_;
    QLabel* memory_;
    QLabel* required_;
    QComboBox* contents_;
    QLabel* secondary_;
    long long secondaryColour_ = 0xFFFFFF;
};

}  // namespace wib

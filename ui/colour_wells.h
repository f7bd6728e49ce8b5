// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

class QToolButton;

namespace wib {

class GeneralTable;
class PaintSession;

// The primary and secondary colour wells, a swap button and the swatches:
// a click on a well opens the colour dialog; a left click on a swatch sets the
// primary colour, a right click the secondary.
class ColourWells : public QWidget {
    Q_OBJECT
  public:
    ColourWells(PaintSession& session, const GeneralTable* swatches, QWidget* parent = nullptr);
    // Shows the session's colours again.
    void showColours();

  private:
    void choose(bool primary);
    void set(bool primary, const QColor& colour);

    PaintSession& session_;
    QToolButton* primary_;
    QToolButton* secondary_;
};

}  // namespace wib

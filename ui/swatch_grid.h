// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QColor>
#include <QWidget>
#include <vector>

namespace wib {

// A grid of colour cells to pick from; emits colourPicked on a click.
class SwatchGrid : public QWidget {
    Q_OBJECT
  public:
    SwatchGrid(std::vector<QColor> colours, int columns, QWidget* parent = nullptr);
    QSize sizeHint() const override;

  Q_SIGNALS:
    // A left click; a right click gives the alternate signal.
    void colourPicked(const QColor& colour);
    void alternateColourPicked(const QColor& colour);

  protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

  private:
    static constexpr int kCell = 12;
    std::vector<QColor> colours_;
    int columns_;
};

}  // namespace wib

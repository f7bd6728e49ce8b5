// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>
#include <array>

namespace wib {

// The Curves panel's curve: the straight lines through (0, 0), the outputs
// at 64, 128 and 192, and (255, 255). Each of the three points is dragged up
// and down to set its output.
class CurveEditor : public QWidget {
    Q_OBJECT
  public:
    explicit CurveEditor(QWidget* parent = nullptr);
    // The outputs at 64, 128 and 192, 0..255 each.
    void setOutputs(const std::array<int, 3>& outputs);
    const std::array<int, 3>& outputs() const { return outputs_; }
    QSize sizeHint() const override;

  Q_SIGNALS:
    void outputsChanged();

  protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

  private:
    QPointF place(int input, int output) const;
    int outputAt(double y) const;

    std::array<int, 3> outputs_{64, 128, 192};
    int dragged_ = -1;  // the point being dragged, -1 for none
};

}  // namespace wib
